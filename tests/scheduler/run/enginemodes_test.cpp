#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <exception>
#include <new>
#include <stdexcept>

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

    engine.setSuspended(true);
    EXPECT_TRUE(policy.suspended);
    EXPECT_TRUE(engine.state().suspended);
    EXPECT_THAT(log, ElementsAre("redraw", "show suspended"));
    engine.onTimer(missed);
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
    EXPECT_THAT(log, ElementsAre("command line of a.kra", "redraw"))
        << "a request is made, but nothing started";
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

TEST_F(SchedulerEngineTest, TestCommandFailsSilentlyWithoutMemory) {
    launcher.commandLineFailure = std::make_exception_ptr(std::bad_alloc());
    addDue("a.kra");
    engine.testTick();
    EXPECT_EQ(entries[0].running, 1);
}

TEST_F(SchedulerEngineTest, TestCommandIsOverEvenWhenItsTickIsCutShort) {
    addRunning("a.kra", 1);
    addDue("b.kra");
    entries[1].waitingSince = at(-1);
    listener.onRedraw = [] { throw std::runtime_error("cannot draw"); };
    EXPECT_THROW(engine.testTick(), std::runtime_error);

    listener.onRedraw = nullptr;
    entries[0].running = 0;
    tickAt(1);
    EXPECT_EQ(launcher.launched.size(), 1u);
}

// Pauses

class PausingListener : public EngineListener {
public:
    void onScheduleChanged() override {}
    void onSuspendedChanged(bool) override {}
    bool wantsTickToPause() override { return ++asked % 2 == 0; }

    int asked = 0;
};

TEST_F(SchedulerEngineTest, ATickThatIsToPauseLeavesTheRestToTheNextOne) {
    policy.runMultiple = true;
    for (const char* name : {"a", "b", "c", "d", "e"})
        addDue(name);
    PausingListener pausing;
    SchedulerEngine paused(entries, policy, {clock, launcher, outcomes, store, messages, pausing});
    const auto running = [&] {
        return std::ranges::count_if(entries, [](const ScheduledProject& entry) { return entry.running; });
    };
    paused.onTimer(at(0));
    EXPECT_EQ(running(), 2);
    paused.onTimer(at(0));
    EXPECT_EQ(running(), 4);
    paused.onTimer(at(1));
    EXPECT_EQ(running(), 5);
    EXPECT_EQ(entries[4].runNumber, 5);
}

TEST_F(SchedulerEngineTest, ATickDoesNotPauseBehindAStartThatFailed) {
    policy.runMultiple = true;
    addFollower("follows the next", 1, 0);
    addFollower("follows the one before", 0, 0);
    addDue("waits for its turn");
    entries[0].nextRun = at(0);
    launcher.threadsStart = false;
    class AlwaysPausing : public PausingListener {
        bool wantsTickToPause() override { return true; }
    } pausing;
    SchedulerEngine paused(entries, policy, {clock, launcher, outcomes, store, messages, pausing});
    paused.onTimer(at(0));
    ASSERT_TRUE(paused.isDue(0, at(0))) << "one of the two always is";
    EXPECT_EQ(entries[2].lastResult, systemError);
}

TEST_F(SchedulerEngineTest, ATickWhoseEntriesWaitDoesNotPause) {
    addRunning("running", 1);
    for (const char* name : {"a", "b", "c"})
        addDue(name);
    PausingListener pausing;
    SchedulerEngine paused(entries, policy, {clock, launcher, outcomes, store, messages, pausing});
    paused.onTimer(at(0));
    EXPECT_EQ(pausing.asked, 0);
    EXPECT_EQ(entries[3].waitingSince, at(0));
}

} // namespace
} // namespace scheduler
