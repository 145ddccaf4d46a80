#include "scheduler/model/deletion.h"
#include "scheduler/ui/schedulerows.h"
#include "tests/support/allocations.h"
#include "tests/support/fakeclock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduleColumn;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using scheduler::ScheduleRows;

class ScheduleRowsTest : public ::testing::Test {
protected:
    static ScheduledProject project(const std::string& name) {
        ScheduledProject entry;
        entry.path = "C:\\Sites\\" + name + ".kra";
        entry.kind = ScheduleKind::Hourly;
        entry.nextRun = TimeValue::never();
        return entry;
    }

    void load(const std::vector<std::string>& names) {
        std::vector<ScheduledProject> entries;
        for (const std::string& name : names)
            entries.push_back(project(name));
        schedule_.assign(std::move(entries));
    }

    std::string column(ScheduleColumn column) const {
        std::string texts;
        for (std::size_t row = 0; row < rows_.size(); ++row)
            texts += rows_.text(row, column) + " ";
        return texts;
    }
    std::string projects() const { return column(ScheduleColumn::Project); }

    test::FakeClock clock_{TimeValue::fromLocal(2026, 5, 20, 12, 0, 0, -1)};
    bool suspended_ = false;
    scheduler::ScheduleList schedule_;
    ScheduleRows rows_{schedule_, [this] { return scheduler::EngineState{false, suspended_}; }, clock_};
};

TEST_F(ScheduleRowsTest, EachColumnSaysWhatItsHeaderPromises) {
    ScheduledProject entry = project("news.daily");
    entry.minutes = 5;
    entry.nextRun = clock_.now() + TimeSpan::fromMinutes(1);
    entry.lastResult = "3 pages are missing";
    schedule_.assign({entry});
    EXPECT_EQ(rows_.text(0, ScheduleColumn::Project), "news.daily");
    EXPECT_EQ(rows_.text(0, ScheduleColumn::Schedule), "hourly at 5 minutes after the hour");
    EXPECT_EQ(rows_.text(0, ScheduleColumn::Parameters), "Run normally");
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::NextRun).starts_with("today at "));
    EXPECT_EQ(rows_.text(0, ScheduleColumn::LastRun), "Never");
    EXPECT_EQ(rows_.text(0, ScheduleColumn::LastResult), "3 pages are missing");
}

TEST_F(ScheduleRowsTest, TextsFollowTheClockAndTheSuspension) {
    load({"news"});
    schedule_[0].nextRun = clock_.now() + TimeSpan::fromSeconds(1);
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::NextRun).starts_with("today"));
    clock_.advance(TimeSpan::fromSeconds(1));
    EXPECT_EQ(rows_.text(0, ScheduleColumn::NextRun), "Now");
    suspended_ = true;
    EXPECT_EQ(rows_.text(0, ScheduleColumn::NextRun), "(suspended)");
    schedule_[0].lastRun = clock_.now();
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::LastRun).starts_with("today"));
    clock_.advance(TimeSpan::fromMinutes(13 * 60));
    EXPECT_TRUE(rows_.text(0, ScheduleColumn::LastRun).starts_with("yesterday"));
}

TEST_F(ScheduleRowsTest, StandInTheSchedulesOrderAtFirst) {
    load({"c", "a", "b"});
    EXPECT_EQ(projects(), "c a b ");
    EXPECT_FALSE(rows_.sortColumn());
}

TEST_F(ScheduleRowsTest, AClickSortsAscendingASecondOneReverses) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(projects(), "a b c ");
    EXPECT_TRUE(rows_.isAscending());
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(projects(), "c b a ");
    EXPECT_FALSE(rows_.isAscending());
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(projects(), "a b c ");
}

TEST_F(ScheduleRowsTest, AnotherColumnSortsAscending) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    rows_.sortBy(ScheduleColumn::Project);
    schedule_[0].minutes = 1;
    schedule_[1].minutes = 2;
    schedule_[2].minutes = 3;
    rows_.sortBy(ScheduleColumn::Schedule);
    EXPECT_EQ(projects(), "c a b ");
    EXPECT_TRUE(rows_.isAscending());
}

TEST_F(ScheduleRowsTest, CapitalsSortBeforeSmallLettersAndBytesAsUnsigned) {
    load({"b", "B", "\xE4", "a"});
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(projects(), "B a b \xE4 ");
}

TEST_F(ScheduleRowsTest, EqualTextsStandInTheSchedulesOrderBothWays) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Parameters);
    EXPECT_EQ(projects(), "c a b ");
    rows_.sortBy(ScheduleColumn::Parameters);
    EXPECT_EQ(projects(), "c a b ");
}

TEST_F(ScheduleRowsTest, NextRunSortsByItsTextNotByItsTime) {
    load({"never", "due", "soon"});
    schedule_[1].nextRun = TimeValue(0);
    schedule_[2].nextRun = clock_.now() + TimeSpan::fromMinutes(1);
    rows_.sortBy(ScheduleColumn::NextRun);
    EXPECT_EQ(projects(), "never due soon "); // "(never)", "Now", "today at ..."
}

TEST_F(ScheduleRowsTest, SortingLeavesTheScheduleAlone) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    EXPECT_EQ(schedule_[0].path, "C:\\Sites\\c.kra");
    EXPECT_EQ(rows_.entryAt(0), 1U);
    EXPECT_EQ(rows_.entryAt(2), 0U);
}

TEST_F(ScheduleRowsTest, ANewEntryComesLastWhateverTheOrder) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    schedule_.append(project("aa"));
    EXPECT_EQ(projects(), "a b c aa ");
    schedule_.insert(0, project("first"));
    EXPECT_EQ(projects(), "a b c aa first ");
}

TEST_F(ScheduleRowsTest, DeletionKeepsTheOrderOfTheOthers) {
    load({"c", "a", "d", "b", "e"});
    rows_.sortBy(ScheduleColumn::Project);
    scheduler::deleteEntries(schedule_, {1, 4});
    EXPECT_EQ(projects(), "b c d ");
    scheduler::deleteEntries(schedule_, {0, 1, 2});
    EXPECT_EQ(rows_.size(), 0U);
}

TEST_F(ScheduleRowsTest, WhateverIsRemovedTheRowsAreThoseThatAreLeft) {
    // Every subset of seven entries, in an order of the rows that is not the schedule's.
    constexpr std::size_t count = 7;
    for (unsigned subset = 0; subset < 1U << count; ++subset) {
        load({"d", "a", "f", "b", "g", "c", "e"});
        rows_.sortBy(ScheduleColumn::Project);
        std::vector<std::size_t> descending;
        for (std::size_t position = count; position-- > 0;)
            if (subset >> position & 1)
                descending.push_back(position);
        schedule_.removeAll(descending);
        ASSERT_EQ(rows_.size(), schedule_.size()) << subset;
        std::string shown;
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            ASSERT_LT(rows_.entryAt(row), schedule_.size()) << subset;
            shown += rows_.text(row, ScheduleColumn::Project);
        }
        EXPECT_TRUE(std::ranges::is_sorted(shown)) << subset << ": " << shown;
        EXPECT_EQ(std::ranges::adjacent_find(shown), shown.end()) << subset << ": " << shown;
    }
}

TEST_F(ScheduleRowsTest, FollowTheRemovalOfOneEntryAndOfAll) {
    load({"c", "a", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    schedule_.remove(1);
    EXPECT_EQ(projects(), "b c ");
    schedule_.clear();
    EXPECT_EQ(rows_.size(), 0U);
    schedule_.append(project("new"));
    EXPECT_EQ(projects(), "new ");
}

TEST_F(ScheduleRowsTest, ARemovalFindsItsRowsWithoutMemory) {
    load({"c", "a", "d", "b"});
    rows_.sortBy(ScheduleColumn::Project);
    const std::vector<std::size_t> descending = {2, 0};
    {
        const test::RefusedAllocations refused;
        schedule_.removeAll(descending);
        schedule_.remove(0);
    }
    EXPECT_EQ(projects(), "b ");
}

TEST_F(ScheduleRowsTest, AnEntryThatNoRowCanBeHadForDoesNotComeIntoTheSchedule) {
    // Room in the schedule, so that it is the rows that are full first.
    load({"c", "a", "b"});
    while (schedule_.size() < 1000)
        schedule_.append(project("gone"));
    while (schedule_.size() > 3)
        schedule_.remove(3);
    ScheduleRows rows(
        schedule_,
        [this] {
            return scheduler::EngineState{false, suspended_};
        },
        clock_);
    std::ptrdiff_t position = 0;
    while (position != scheduler::ScheduleList::noMemory) {
        ASSERT_LT(schedule_.size(), schedule_.capacity());
        ScheduledProject entry = project("first");
        {
            const test::RefusedAllocations refused;
            EXPECT_NO_THROW(position = schedule_.insert(0, std::move(entry)));
        }
        ASSERT_EQ(rows.size(), schedule_.size());
        EXPECT_EQ(rows.text(0, ScheduleColumn::Project), "c");
    }
    schedule_.insert(0, project("memory"));
    ASSERT_EQ(rows.size(), schedule_.size());
    EXPECT_EQ(rows.text(0, ScheduleColumn::Project), "c");
    EXPECT_EQ(rows.text(rows.size() - 1, ScheduleColumn::Project), "memory");
}

TEST_F(ScheduleRowsTest, ALoadThatNoRowsCanBeHadForChangesNothing) {
    load({"c", "a"});
    rows_.sortBy(ScheduleColumn::Project);
    std::vector<ScheduledProject> entries(100, project("news"));
    bool loaded = true;
    {
        const test::RefusedAllocations refused;
        EXPECT_NO_THROW(loaded = schedule_.assign(std::move(entries)));
    }
    EXPECT_FALSE(loaded);
    EXPECT_EQ(projects(), "a c ");
}

TEST_F(ScheduleRowsTest, ALoadStartsAfresh) {
    load({"c", "a"});
    rows_.sortBy(ScheduleColumn::Project);
    load({"z", "y"});
    EXPECT_EQ(projects(), "z y ");
    EXPECT_FALSE(rows_.sortColumn());
}

TEST_F(ScheduleRowsTest, FindsAProjectByItsBeginningFromARowOnAndThenFromTheTop) {
    load({"alpha", "beta", "Alps"});
    EXPECT_EQ(rows_.findProject("al", 0), 0U);
    EXPECT_EQ(rows_.findProject("al", 1), 2U);
    EXPECT_EQ(rows_.findProject("AL", 3), 0U);
    EXPECT_EQ(rows_.findProject("alpha", 1), 0U);
    EXPECT_FALSE(rows_.findProject("gamma", 0));
    load({});
    EXPECT_FALSE(rows_.findProject("a", 0));
}

TEST_F(ScheduleRowsTest, ASortMakesEachTextOnce) {
    std::size_t asked = 0;
    schedule_.assign(std::vector<ScheduledProject>(500, project("news")));
    ScheduleRows watched(
        schedule_,
        [&] {
            ++asked;
            return scheduler::EngineState{false, suspended_};
        },
        clock_);
    watched.sortBy(ScheduleColumn::NextRun);
    EXPECT_EQ(asked, schedule_.size());
}

} // namespace
