#include "scheduler/run/engine.h"
#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::ElementsAre;
using testing::IsEmpty;

// What is due

TEST_F(SchedulerEngineTest, DueFromTheSecondOfTheNextRunOn) {
    struct Row {
        std::int32_t now, nextRun;
        bool due;
    };
    const Row rows[] = {
        {1000, 999, true}, {1000, 1000, true},     {1000, 1001, false},
        {1000, 0, true},   {1000, highest, false}, {highest, highest, true},
        {-5, 0, false},    {0, -5, true},          {lowest, highest, false},
    };
    addIdle("a.kra");
    for (const Row& row : rows) {
        entries[0].nextRun = TimeValue(row.nextRun);
        EXPECT_EQ(engine.isDue(0, TimeValue(row.now)), row.due) << row.now << " " << row.nextRun;
    }
}

TEST_F(SchedulerEngineTest, NeitherDisabledNorRunningEntriesAreDue) {
    addDue("a.kra");
    EXPECT_TRUE(engine.isDue(0, at(0)));
    entries[0].disabled = 1;
    EXPECT_FALSE(engine.isDue(0, at(0)));
    entries[0].disabled = 0;
    entries[0].running = 1;
    EXPECT_FALSE(engine.isDue(0, at(0)));
}

TEST_F(SchedulerEngineTest, AnyRunningFollowsTheEntries) {
    EXPECT_FALSE(engine.anyRunning());
    addIdle("a.kra");
    addIdle("b.kra");
    EXPECT_FALSE(engine.anyRunning());
    entries[1].running = 1;
    EXPECT_TRUE(engine.anyRunning());
    EXPECT_TRUE(engine.anyRunning());
    entries[1].running = 0;
    entries[0].running = 1;
    EXPECT_TRUE(engine.anyRunning());
    entries.remove(0);
    EXPECT_FALSE(engine.anyRunning());
    entries[0].running = 1;
    EXPECT_TRUE(engine.anyRunning());
    entries.clear();
    EXPECT_FALSE(engine.anyRunning());
}

// Starting

TEST_F(SchedulerEngineTest, DueEntryIsStartedUnderItsRunNumber) {
    addDue("a.kra");
    EXPECT_EQ(tickAt(3), (TickResult{.changed = true}));
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw")) << "starting does not save";
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[0].runStart, at(3));
    EXPECT_EQ(entries[0].runNumber, 1);
    EXPECT_EQ(entries[0].waitingSince, TimeValue());
    EXPECT_EQ(entries[0].lastRun, TimeValue());
}

TEST_F(SchedulerEngineTest, RunningEntryIsNotStartedAgain) {
    addDue("a.kra");
    tickAt(0);
    EXPECT_EQ(tickAt(1), TickResult());
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(launcher.launched.size(), 1u);
}

TEST_F(SchedulerEngineTest, IdleTickDoesNothing) {
    addIdle("a.kra");
    EXPECT_EQ(tickAt(0), TickResult());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SchedulerEngineTest, SideBySideAllDueEntriesStartInOrder) {
    policy.runMultiple = true;
    addDue("a.kra");
    addIdle("b.kra");
    addDue("c.kra");
    addDue("d.kra");
    tickAt(0);
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "launch c.kra as run 2", "launch d.kra as run 3",
                                 "redraw"));
}

TEST_F(SchedulerEngineTest, RunNumberIsOneMoreThanTheHighestRunning) {
    policy.runMultiple = true;
    addRunning("a.kra", 1);
    addRunning("b.kra", 4);
    addIdle("ended.kra");
    entries[2].runNumber = 9;
    addDue("c.kra");
    tickAt(0);
    EXPECT_EQ(entries[3].runNumber, 5);
    EXPECT_TRUE(finishAt(1, 4));
    entries[2].nextRun = at(0);
    tickAt(2);
    EXPECT_EQ(entries[2].runNumber, 6);
    for (const std::uint32_t number : {1u, 5u, 6u})
        EXPECT_TRUE(finishAt(3, number));
    entries[0].nextRun = at(0);
    tickAt(4);
    EXPECT_EQ(entries[0].runNumber, 1) << "nothing else runs";
}

// Manual runs

TEST_F(SchedulerEngineTest, ManualRunNeverWaits) {
    addRunning("a.kra", 1);
    addIdle("b.kra");
    entries[1].disabled = 1;
    engine.runEntry(1, at(4), true);
    EXPECT_THAT(log, ElementsAre("launch b.kra as run 2", "redraw"));
    EXPECT_EQ(entries[1].running, 1);
    EXPECT_EQ(entries[1].runStart, at(4));
}

TEST_F(SchedulerEngineTest, ManualRunOfARunningEntryLeavesTheFirstEndUnmatched) {
    addIdle("a.kra");
    engine.runEntry(0, at(0), true);
    engine.runEntry(0, at(1), true);
    EXPECT_EQ(entries[0].runNumber, 2);
    EXPECT_FALSE(finishAt(2, 1));
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_TRUE(finishAt(3, 2));
    EXPECT_EQ(entries[0].running, 0);
}

// The first evaluation

TEST_F(SchedulerEngineTest, ResetClearsTheRunStateAndNothingElse) {
    ScheduledProject full = idleEntry("a.kra");
    full.lastResult = "result";
    full.lastRun = at(-5);
    full.running = 1;
    full.waitingSince = at(-4);
    full.runStart = at(-3);
    full.runNumber = 9;
    full.retriesDone = 3;
    full.retryLimit = 4;
    full.nextRun = at(-2);
    add(full);
    engine.resetAll(at(0));
    ScheduledProject expected = full;
    expected.running = 0;
    expected.waitingSince = TimeValue();
    expected.runStart = TimeValue();
    expected.runNumber = 0;
    expected.retriesDone = 0;
    expected.nextRun = TimeValue::never();
    EXPECT_EQ(entries[0], expected);
    EXPECT_THAT(log, ElementsAre("redraw"));
}

TEST_F(SchedulerEngineTest, AtStartupEntryRunsOnTheFirstTickAfterALogOn) {
    ScheduledProject atStartup = idleEntry("a.kra");
    atStartup.kind = ScheduleKind::AtStartup;
    atStartup.minutes = 30;
    add(atStartup);
    engine.setStartupFlag(true);
    EXPECT_TRUE(engine.state().startupFlag);
    engine.resetAll(at(0));
    engine.recomputeAll(at(0));
    engine.setStartupFlag(false);
    tickAt(1);
    EXPECT_EQ(entries[0].running, 1) << "its delay is not added";
    EXPECT_TRUE(finishAt(2, 1));
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
}

TEST_F(SchedulerEngineTest, AtStartupEntryDoesNotRunWhenStartedByHand) {
    ScheduledProject atStartup = idleEntry("a.kra");
    atStartup.kind = ScheduleKind::AtStartup;
    add(atStartup);
    engine.resetAll(at(0));
    tickAt(1);
    EXPECT_EQ(entries[0].running, 0);
}

TEST_F(SchedulerEngineTest, IsNeitherStartingNorSuspendedAtFirst) {
    EXPECT_FALSE(engine.state().startupFlag);
    EXPECT_FALSE(engine.state().suspended);
}

} // namespace
} // namespace scheduler
