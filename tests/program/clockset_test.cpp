#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

constexpr TimeSpan hour = TimeSpan::fromMinutes(60);
constexpr TimeSpan day = TimeSpan::fromDays(1);
constexpr TimeSpan year = TimeSpan::fromDays(365);

enum Position : std::size_t { hourly, daily, monthly, once, count };

class ClockSet : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        clock_.moveTo(begin_); // earlier tests have moved it
    }

    void startWithEachKind() {
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\RunMultiple", 1);
        std::vector<ScheduledProject> entries(count, driver::sleeping(spider_.makeProject("a.kra")));
        entries[hourly].kind = ScheduleKind::Hourly;
        entries[hourly].minutes = 30;
        entries[daily].kind = ScheduleKind::Daily;
        entries[monthly].kind = ScheduleKind::Monthly;
        entries[monthly].dayOfMonth = 20;
        entries[once].kind = ScheduleKind::Once;
        entries[daily].time = entries[monthly].time = begin_ + TimeSpan::fromMinutes(5 * 60);
        entries[once].time = begin_ + TimeSpan::fromDays(3);
        startWith(entries, "/s");
    }

    void moveBy(TimeSpan span) { clock_.moveTo(TimeValue::now() + span); }

    using Runs = std::vector<std::size_t>;

    /// Ticks twice, because a tick may pause before all due entries have started. Returns how often each
    /// entry has run since the test began.
    Runs runsAfterTwoTicks() {
        scheduler_.tick();
        scheduler_.tick();
        EXPECT_TRUE(driver::waitUntil([&] {
            for (std::size_t entry = 0; entry < count; ++entry) {
                const std::string next = list().cell(static_cast<int>(entry), driver::nextRunColumn);
                if (next == "Running" || next == "Now")
                    return false;
            }
            return true;
        }));
        saved_ = driver::savedSchedule();
        EXPECT_EQ(saved_.size(), std::size_t{count});
        for (std::size_t entry = 0; entry < count; ++entry)
            if (saved_[entry].lastRun != lastRuns_[entry]) {
                lastRuns_[entry] = saved_[entry].lastRun;
                ++runs_[entry];
            }
        return runs_;
    }
    TimeValue nextRun(Position entry) const { return saved_[entry].nextRun; }

    driver::SettableClock clock_;
    driver::SampleSpider spider_;
    const TimeValue begin_ = TimeValue::fromLocal(2026, 5, 12, 10, 0, 0, -1);
    std::vector<ScheduledProject> saved_;
    std::vector<TimeValue> lastRuns_ = std::vector<TimeValue>(count);
    Runs runs_ = Runs(count);
};

TEST_F(ClockSet, ForwardRunsSkippedEntriesOnce) {
    startWithEachKind();
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{0, 0, 0, 0}));
    moveBy(hour);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{1, 0, 0, 0}));
    EXPECT_EQ(nextRun(hourly), begin_ + TimeSpan::fromMinutes(90));
    moveBy(day);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{2, 1, 0, 0}));
    moveBy(year);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{3, 2, 1, 1}));
    EXPECT_EQ(nextRun(once), TimeValue::never());
}

TEST_F(ClockSet, BackwardWaitsForTheUnchangedNextRuns) {
    startWithEachKind();
    moveBy(hour);
    ASSERT_EQ(runsAfterTwoTicks(), (Runs{1, 0, 0, 0}));
    const TimeValue next = nextRun(hourly);
    for (const TimeSpan step : {hour, day, year}) {
        clock_.moveTo(TimeValue::now() - step);
        EXPECT_EQ(runsAfterTwoTicks(), (Runs{1, 0, 0, 0}));
        EXPECT_EQ(nextRun(hourly), next);
    }
    clock_.moveTo(next);
    EXPECT_EQ(runsAfterTwoTicks(), (Runs{2, 0, 0, 0}));
    EXPECT_EQ(nextRun(hourly), next + hour);
}

} // namespace
