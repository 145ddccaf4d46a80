#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::ElementsAre;
using testing::IsEmpty;

// Waiting

TEST_F(SchedulerEngineTest, TwoDueInTheSameSecondTheFirstStartsTheSecondWaits) {
    addDue("a.kra");
    addDue("b.kra");
    tickAt(5);
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw"));
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[1].waitingSince, at(5));
    EXPECT_TRUE(engine.isDue(1, at(5))) << "it stays due";
}

TEST_F(SchedulerEngineTest, WaitingEntryIsLookedAtOnEveryTick) {
    addRunning("a.kra", 1);
    addDue("b.kra");
    EXPECT_EQ(tickAt(0), TickResult());
    EXPECT_THAT(log, IsEmpty()) << "beginning to wait draws nothing";
    EXPECT_EQ(tickAt(1), (TickResult{.changed = true}));
    EXPECT_THAT(log, ElementsAre("redraw"));
    EXPECT_EQ(entries[1].waitingSince, at(0));
}

TEST_F(SchedulerEngineTest, WaitEndsOneMinuteAfterTheWaitTime) {
    for (const std::int32_t minutes : {0, 1, 20, 600}) {
        entries.clear();
        addRunning("a.kra", 1);
        addDue("b.kra");
        policy.waitTime = static_cast<std::uint32_t>(minutes);
        const std::int32_t end = (minutes + 1) * 60;
        tickAt(0);
        for (const std::int32_t second : {1, end - 60, end - 1}) {
            tickAt(second);
            EXPECT_EQ(entries[1].waitingSince, at(0)) << minutes << " minutes, second " << second;
            EXPECT_EQ(entries[1].lastResult, "");
        }
        tickAt(end);
        EXPECT_EQ(entries[1].waitingSince, TimeValue()) << minutes << " minutes";
        EXPECT_EQ(entries[1].lastResult, conflict);
    }
}

TEST_F(SchedulerEngineTest, WaitTimeZeroGivesUpAfterSixtySecondsNotAtOnce) {
    addRunning("a.kra", 1);
    addDue("b.kra");
    policy.waitTime = 0;
    for (std::int32_t second = 0; second < 60; ++second) {
        tickAt(second);
        ASSERT_EQ(entries[1].waitingSince, at(0)) << second;
    }
    tickAt(60);
    EXPECT_EQ(entries[1].lastResult, conflict);
}

TEST_F(SchedulerEngineTest, GivingUpIsARunThatBeganAndEndedNow) {
    addRunning("a.kra", 6);
    addDue("b.kra");
    entries[1].retryLimit = 5;
    entries[1].retriesDone = 2;
    addFollower("c.kra", 1, 10);
    policy.waitTime = 0;
    tickAt(0);
    EXPECT_EQ(tickAt(77), (TickResult{.changed = true}));
    EXPECT_THAT(log, ElementsAre("save", "redraw")) << "nothing is started, no outcome is read";
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[1].runNumber, 7);
    EXPECT_EQ(entries[1].runStart, at(77));
    EXPECT_EQ(entries[1].lastRun, at(77));
    EXPECT_EQ(entries[1].lastResult, conflict);
    EXPECT_EQ(entries[1].retriesDone, 0u) << "it is not retried";
    EXPECT_EQ(entries[1].nextRun, TimeValue::never());
    EXPECT_EQ(entries[2].nextRun, at(77 + 600)) << "the chain goes on";
    tickAt(78);
    EXPECT_THAT(log, IsEmpty()) << "it is no longer due";
}

TEST_F(SchedulerEngineTest, GivingUpComputesTheNextRunFromNow) {
    addRunning("a.kra", 1);
    ScheduledProject hourly = idleEntry("b.kra");
    hourly.kind = ScheduleKind::Hourly;
    hourly.minutes = 7;
    hourly.nextRun = at(0);
    add(hourly);
    policy.waitTime = 0;
    tickAt(0);
    tickAt(60);
    EXPECT_EQ(entries[1].nextRun, computeNextRun(engine.state(), hourly, at(60), clock));
    EXPECT_GT(entries[1].nextRun, at(60));
}

TEST_F(SchedulerEngineTest, WaitIsComparedUnsigned) {
    struct Row {
        std::int32_t waitingSince, now;
        std::uint32_t waitTime;
        bool givesUp;
    };
    const Row rows[] = {
        // The clock was set back: less than a minute is no minute, a minute is enormously many.
        {1000, 941, 0, false},
        {1000, 940, 0, true},
        {1000, 940, 20, true},
        {1000, 940, 0xFFFFFFFE, true},
        {1000, 940, 0xFFFFFFFF, false},
        {highest, 1, 35'791'393, true},
        {highest, 1, 0xFFFFFFFF, false},
        // Endless waits.
        {1, highest, 0x7FFFFFFF, false},
        {1, highest, 0xFFFFFFFF, false},
        {1, highest, 35'791'394, false},
        {1, highest, 35'791'393, true},
        // A damaged file's time, so far back that the difference wraps around.
        {lowest, highest, 0xFFFFFFFF, false},
        {lowest, highest, 0, false},
        {lowest, 0, 0x7FFFFFFF, true},
    };
    for (const Row& row : rows) {
        entries.clear();
        addRunning("a.kra", 1);
        addIdle("b.kra");
        entries[1].nextRun = TimeValue(row.now);
        entries[1].waitingSince = TimeValue(row.waitingSince);
        policy.waitTime = row.waitTime;
        engine.onTimer(TimeValue(row.now));
        EXPECT_EQ(entries[1].lastResult, row.givesUp ? conflict : "")
            << row.waitingSince << " " << row.now << " " << row.waitTime;
    }
}

TEST_F(SchedulerEngineTest, WaitingEntryStartsWhenTheRunningOneHasEnded) {
    addDue("a.kra");
    addDue("b.kra");
    tickAt(0);
    tickAt(1);
    EXPECT_TRUE(finishAt(2, 1));
    EXPECT_EQ(entries[1].running, 0) << "the next tick starts it";
    tickAt(3);
    EXPECT_THAT(log, ElementsAre("launch b.kra as run 1", "redraw"));
    EXPECT_EQ(entries[1].waitingSince, at(0)) << "kept until the run's end";
    EXPECT_TRUE(finishAt(9, 1));
    EXPECT_EQ(entries[1].waitingSince, TimeValue());
    EXPECT_EQ(entries[1].lastRun, at(3));
}

TEST_F(SchedulerEngineTest, OneOfTheWaitingStartsAtATimeInScheduleOrder) {
    addRunning("a.kra", 1);
    addDue("b.kra");
    addDue("c.kra");
    tickAt(0);
    finishAt(1, 1);
    tickAt(1);
    EXPECT_EQ(entries[1].running, 1);
    EXPECT_EQ(entries[2].running, 0);
    EXPECT_EQ(entries[2].waitingSince, at(0));
}

TEST_F(SchedulerEngineTest, WaitingEntryStartsWhenSideBySideIsAllowedMeanwhile) {
    addRunning("a.kra", 1);
    addDue("b.kra");
    tickAt(0);
    policy.runMultiple = true;
    tickAt(1);
    EXPECT_EQ(entries[1].running, 1);
    EXPECT_EQ(entries[1].runNumber, 2);
}

} // namespace
} // namespace scheduler
