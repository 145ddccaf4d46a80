// The clock is set while the program runs: next runs stand, whatever the clock says then. What has been
// passed over runs once, at once; what lies ahead again waits.

#include "lib/base/registry.h"
#include "resources/ids.h"
#include "tests/program/occasions.h"
#include "tests/program/scheduledriver.h"
#include "tests/program/settableclock.h"

#include <gtest/gtest.h>

using base::TimeValue;
using driver::waitUntil;
using plain::Second;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

const std::string programKey = "Software\\Brindlewood\\scheduler";

constexpr Second hour = 3600;
constexpr Second day = 24 * hour;
constexpr Second year = 365 * day;

// What the program may be late on a busy machine.
constexpr Second lateness = 120;

enum Position { hourly, daily, monthly, once, count };

Second now() {
    return TimeValue::now().seconds();
}

/// Starts in May, at ten o'clock.
class ClockSet : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(clock_.isThere()) << "this test needs a clock of its own";
        base::deleteKey(HKEY_CURRENT_USER, programKey);
        base::writeNumber(HKEY_CURRENT_USER, programKey + "\\State\\RunMultiple", 1);
        // The tests before have moved the clock.
        clock_.moveBy(begin_ - now());
        std::vector<ScheduledProject> entries(count);
        for (ScheduledProject& entry : entries)
            entry.path = spider_.makeProject(std::to_string(&entry - entries.data()) + ".kra", "ms=20\n");
        entries[hourly].kind = ScheduleKind::Hourly;
        entries[hourly].minutes = 30;
        entries[daily].kind = ScheduleKind::Daily;
        entries[monthly].kind = ScheduleKind::Monthly;
        entries[monthly].dayOfMonth = 20;
        entries[once].kind = ScheduleKind::Once;
        entries[daily].time = entries[monthly].time = TimeValue(static_cast<std::int32_t>(begin_ + 5 * hour));
        entries[once].time = TimeValue(static_cast<std::int32_t>(begin_ + 3 * day));
        driver::saveEntries(entries);
        const Second before = now();
        ASSERT_TRUE(scheduler_.start("/s"));
        occasions_ = std::make_unique<driver::Occasions>(entries, before, now(), year + day);
    }
    void TearDown() override {
        scheduler_.kill();
        driver::saveEntries({});
        base::deleteKey(HKEY_CURRENT_USER, programKey);
    }

    /// How often each entry has run, once the program has had the time for more.
    std::vector<std::size_t> runsAfterAWhile() {
        waitUntil([&] {
            occasions_->look(now());
            return !occasions_->isAnyOverdue(now());
        });
        const ULONGLONG end = GetTickCount64() + 2500; // two ticks
        while (GetTickCount64() < end) {
            Sleep(20);
            occasions_->look(now());
        }
        std::vector<std::size_t> runs;
        for (std::size_t entry = 0; entry < count; ++entry)
            runs.push_back(occasions_->runsOf(entry));
        return runs;
    }

    using Runs = std::vector<std::size_t>;

    driver::SettableClock clock_;
    driver::SampleSpider spider_;
    driver::SchedulerProcess scheduler_;
    std::unique_ptr<driver::Occasions> occasions_;
    static inline const Second begin_ = now();
};

TEST_F(ClockSet, ForwardsRunsOnceWhatWasPassedOver) {
    EXPECT_EQ(runsAfterAWhile(), (Runs{0, 0, 0, 0}));
    clock_.moveBy(hour);
    EXPECT_EQ(runsAfterAWhile(), (Runs{1, 0, 0, 0}));
    EXPECT_LE(occasions_->nextOf(hourly), now() + hour);
    clock_.moveBy(day);
    EXPECT_EQ(runsAfterAWhile(), (Runs{2, 1, 0, 0}));
    clock_.moveBy(year);
    EXPECT_EQ(runsAfterAWhile(), (Runs{3, 2, 1, 1}));
    EXPECT_EQ(occasions_->nextOf(once), plain::never);
    occasions_->expectNoneMissed(now() + year);
}

TEST_F(ClockSet, BackwardsWaitsUntilTheNextRunsComeAgain) {
    clock_.moveBy(hour);
    ASSERT_EQ(runsAfterAWhile(), (Runs{1, 0, 0, 0}));
    const Second next = occasions_->nextOf(hourly);
    for (const Second step : {hour, day, year}) {
        clock_.moveBy(-step);
        EXPECT_EQ(runsAfterAWhile(), (Runs{1, 0, 0, 0})) << step;
        EXPECT_EQ(occasions_->nextOf(hourly), next);
    }
    clock_.moveBy(next - now() - 4);
    EXPECT_EQ(runsAfterAWhile()[hourly], now() < next ? 1U : 2U);
    ASSERT_TRUE(waitUntil([&] {
        occasions_->look(now());
        return occasions_->runsOf(hourly) == 2;
    }));
    EXPECT_LE(now(), next + lateness);
}

TEST_F(ClockSet, BackwardsIsCaughtUpWithByResuming) {
    clock_.moveBy(-day);
    ASSERT_EQ(runsAfterAWhile(), (Runs{0, 0, 0, 0}));
    for (const std::string title : {"Corvane Scheduler (suspended)", "Corvane Scheduler"}) {
        scheduler_.command(IDM_SUSPEND);
        ASSERT_TRUE(waitUntil([&] { return driver::textOf(scheduler_.window()) == title; }));
    }
    const Second resumed = now();
    ASSERT_TRUE(scheduler_.exit());
    const std::vector<ScheduledProject> saved = driver::savedSchedule();
    ASSERT_EQ(saved.size(), std::size_t{count});
    EXPECT_LE(saved[hourly].nextRun.seconds(), resumed + hour);
    EXPECT_LE(saved[daily].nextRun.seconds(), resumed + day);
}

} // namespace
