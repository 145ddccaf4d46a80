#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

namespace scheduler {
namespace {

using base::TimeSpan;
using base::TimeValue;
using testing::ElementsAre;
using testing::IsEmpty;

// Suspending

TEST_F(SchedulerEngineTest, SuspendedNothingStartsAndResumingSkipsWhatWasMissed) {
    ScheduledProject hourly = idleEntry("a.kra");
    hourly.kind = ScheduleKind::Hourly;
    add(hourly);
    engine.recomputeAll(at(0));
    const TimeValue missed = entries[0].nextRun;
    log.clear();

    engine.setSuspended(true);
    EXPECT_TRUE(policy.suspended);
    EXPECT_TRUE(engine.state().suspended);
    EXPECT_THAT(log, ElementsAre("redraw", "show suspended"));
    EXPECT_EQ(engine.onTimer(missed), TickResult());
    EXPECT_EQ(entries[0].running, 0);

    clock.set(missed + TimeSpan::fromSeconds(1));
    log.clear();
    engine.setSuspended(false);
    EXPECT_FALSE(policy.suspended);
    EXPECT_THAT(log, ElementsAre("redraw", "show resumed"));
    EXPECT_GT(entries[0].nextRun, missed);
    engine.onTimer(clock.now());
    EXPECT_EQ(entries[0].running, 0);
}

TEST_F(SchedulerEngineTest, SuspendingComputesAfreshWhatIsNotRunning) {
    policy.runMultiple = true;
    addDue("a.kra");
    addRunning("b.kra", 1).nextRun = at(3);
    engine.setSuspended(true);
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[1].nextRun, at(3));
}

TEST_F(SchedulerEngineTest, RunsUnderWayAreRecordedWhileSuspended) {
    addDue("a.kra");
    tickAt(0);
    engine.setSuspended(true);
    EXPECT_TRUE(finishAt(5, 1, {"done", 0}));
    EXPECT_EQ(entries[0].lastResult, "done");
}

// The test command

TEST_F(SchedulerEngineTest, TestCommandShowsADueEntryAsRunningForEver) {
    addDue("a.kra");
    addIdle("b.kra");
    addDue("c.kra");
    policy.suspended = true;
    clock.set(at(2));
    engine.testTick();
    EXPECT_THAT(log, ElementsAre("redraw")) << "nothing is launched or saved";
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[0].runNumber, 1);
    EXPECT_EQ(entries[0].runStart, at(2));
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[2].waitingSince, at(2)) << "the rules of conflicts hold";
    EXPECT_THAT(launcher.launched, IsEmpty());

    policy.suspended = false;
    tickAt(100);
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[2].running, 0);

    engine.resetAll(at(200));
    EXPECT_EQ(entries[0].running, 0) << "restarting the program clears it";
    entries[0].nextRun = at(200);
    tickAt(200);
    EXPECT_EQ(launcher.launched.size(), 1u) << "the test mode is over with its tick";
}

TEST_F(SchedulerEngineTest, TestCommandGoesByTheClock) {
    addDue("a.kra");
    clock.set(at(-1));
    engine.testTick();
    EXPECT_EQ(entries[0].running, 0);
}

} // namespace
} // namespace scheduler
