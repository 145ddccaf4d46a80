#include "scheduler/ui/schedulerows.h"
#include "tests/support/fakeclock.h"

#include <gtest/gtest.h>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::RowImage;
using scheduler::ScheduleColumn;

class Row : public testing::Test {
protected:
    Row() {
        for (const char* const path : {"b.kra", "a.kra"}) {
            scheduler::ScheduledProject entry;
            entry.path = path;
            entry.kind = scheduler::ScheduleKind::Hourly;
            entry.nextRun = TimeValue::never();
            schedule_.append(entry);
        }
    }

    test::FakeClock clock_{TimeValue(1'781'500'000)};
    bool suspended_ = false;
    scheduler::ScheduleList schedule_;
    scheduler::ScheduleRows rows_{schedule_,
                                  [this] {
                                      return scheduler::EngineState{false, suspended_};
                                  },
                                  clock_};
};

using RowTexts = Row;

TEST_F(RowTexts, AreJoinedByTabsWithControlCharactersReplaced) {
    schedule_[0].lastResult = "two\r\nlines";
    schedule_[1].path = "a\tc.kra";
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(rows_.line(0), "a c\thourly on the hour\tRun normally\t(never)\tNever\t\r\n");
    EXPECT_EQ(rows_.line(1), "b\thourly on the hour\tRun normally\t(never)\tNever\ttwo  lines\r\n");
}

using RowImages = Row;

TEST_F(RowImages, ShowTheMostImportantState) {
    scheduler::ScheduledProject& entry = schedule_[0];
    EXPECT_EQ(rows_.image(0), RowImage::None);
    entry.lastResult = "3 pages are missing";
    EXPECT_EQ(rows_.image(0), RowImage::Result);
    entry.nextRun = clock_.now();
    EXPECT_EQ(rows_.image(0), RowImage::Result) << "due, but not waiting for another";
    entry.waitingSince = clock_.now();
    EXPECT_EQ(rows_.image(0), RowImage::Waiting);
    entry.disabled = 1;
    EXPECT_EQ(rows_.image(0), RowImage::Disabled);
    entry.running = 1;
    EXPECT_EQ(rows_.image(0), RowImage::Running);
}

TEST_F(RowImages, ShowWaitingOnlyForADueEntryThatMayStart) {
    schedule_[0].waitingSince = clock_.now() - TimeSpan::fromMinutes(1);
    schedule_[0].nextRun = clock_.now() + TimeSpan::fromSeconds(1);
    EXPECT_EQ(rows_.image(0), RowImage::None) << "no longer due";
    clock_.advance(TimeSpan::fromSeconds(1));
    EXPECT_EQ(rows_.image(0), RowImage::Waiting);
    suspended_ = true;
    EXPECT_EQ(rows_.image(0), RowImage::None);
}

TEST_F(RowImages, FollowTheirEntriesInASortedList) {
    schedule_[0].disabled = 1;
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(rows_.image(0), RowImage::None);
    EXPECT_EQ(rows_.image(1), RowImage::Disabled);
}

} // namespace
