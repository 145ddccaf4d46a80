#include "scheduler/run/engine.h"
#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <new>
#include <random>
#include <vector>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::ElementsAre;
using testing::IsEmpty;

class Engine : public SchedulerEngineTest {};

TEST_F(Engine, EntryIsDueAtAndAfterItsNextRun) {
    const struct {
        std::int32_t now, nextRun;
        bool due;
    } rows[] = {
        {1000, 999, true}, {1000, 1000, true},     {1000, 1001, false},
        {1000, 0, true},   {1000, highest, false}, {highest, highest, true},
        {-5, 0, false},    {0, -5, true},          {lowest, highest, false},
    };
    addIdle("a.kra");
    for (const auto& row : rows) {
        entries[0].nextRun = TimeValue(row.nextRun);
        EXPECT_EQ(engine.isDue(0, TimeValue(row.now)), row.due) << row.now << " " << row.nextRun;
    }
}

TEST_F(Engine, DisabledAndRunningEntriesAreNotDue) {
    addDue("disabled.kra").disabled = 255;
    addDue("running.kra").running = 2;
    EXPECT_FALSE(engine.isDue(0, at(0)));
    EXPECT_FALSE(engine.isDue(1, at(0)));
}

TEST_F(Engine, AnyRunningReflectsTheEntries) {
    addIdle("a.kra");
    addIdle("b.kra");
    EXPECT_FALSE(engine.anyRunning());
    entries[0].running = 1;
    EXPECT_TRUE(engine.anyRunning());
    entries.remove(0);
    EXPECT_FALSE(engine.anyRunning());
    entries[0].running = 1;
    EXPECT_TRUE(engine.anyRunning());
    entries.clear();
    EXPECT_FALSE(engine.anyRunning());
}

TEST_F(Engine, TickStartsADueEntryOnceWithoutSaving) {
    addDue("a.kra");
    EXPECT_EQ(tickAt(-1), TickResult());
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(tickAt(3), (TickResult{.changed = true}));
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw"));
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[0].runStart, at(3));
    EXPECT_EQ(entries[0].runNumber, 1);
    EXPECT_EQ(entries[0].waitingSince, TimeValue());
    EXPECT_EQ(entries[0].lastRun, TimeValue());
    EXPECT_EQ(tickAt(4), TickResult());
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(Engine, RunNumberIsOneAboveTheHighestRunningOne) {
    const struct {
        std::vector<std::int32_t> running;
        std::int32_t next;
    } rows[] = {{{}, 1}, {{1, 4}, 5}, {{4, 1}, 5}, {{2, 7, 3}, 8}, {{-5}, 1}, {{highest}, lowest}};
    policy.runMultiple = true;
    for (const auto& row : rows) {
        entries.clear();
        addIdle("ended.kra").runNumber = 9;
        for (const std::int32_t number : row.running)
            addRunning("running.kra", number);
        addDue("due.kra");
        tickAt(0);
        EXPECT_EQ(entries[entries.size() - 1].runNumber, row.next);
        EXPECT_TRUE(finishAt(1, static_cast<std::uint32_t>(row.next)));
    }
}

TEST_F(Engine, ManualRunStartsEvenADisabledOrRunningEntryBesideOthers) {
    addRunning("a.kra", 1);
    addIdle("b.kra").disabled = 1;
    engine.runEntry(1, at(4), true);
    EXPECT_THAT(log, ElementsAre("launch b.kra as run 2", "redraw"));
    engine.runEntry(1, at(5), true);
    EXPECT_EQ(entries[1].runStart, at(5));
    EXPECT_FALSE(finishAt(6, 2));
    EXPECT_TRUE(finishAt(7, 3));
    EXPECT_EQ(entries[1].running, 0);
}

TEST_F(Engine, ResetClearsOnlyTheRunState) {
    ScheduledProject& entry = addIdle("a.kra");
    entry.lastResult = "result";
    entry.lastRun = at(-5);
    entry.retryLimit = 4;
    const ScheduledProject expected = entry;
    entry.running = 1;
    entry.waitingSince = at(-4);
    entry.runStart = at(-3);
    entry.runNumber = 9;
    entry.retriesDone = 3;
    entry.nextRun = at(-2);
    engine.resetAll(at(0));
    EXPECT_EQ(entries[0], expected);
    EXPECT_THAT(log, ElementsAre("redraw"));
}

TEST_F(Engine, StartupEntryRunsAtTheFirstTickAfterLogOnWithoutDelay) {
    addIdle("a.kra", ScheduleKind::AtStartup).minutes = 30;
    EXPECT_EQ(engine.state().startupFlag, false) << "not started at log-on";
    engine.resetAll(at(0));
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    engine.setStartupFlag(true);
    engine.resetAll(at(0));
    engine.recomputeAll(at(0));
    engine.setStartupFlag(false);
    tickAt(1);
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_TRUE(finishAt(2, 1));
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
}

TEST_F(Engine, RecomputingAllEntriesReadsTheClockOnce) {
    addIdle("a.kra", ScheduleKind::Daily);
    addIdle("b.kra", ScheduleKind::Monthly);
    clock.reads = 0;
    engine.resetAll(at(0));
    EXPECT_EQ(clock.reads, 1);
    engine.recomputeAll(at(0));
    EXPECT_EQ(clock.reads, 2);
}

TEST_F(Engine, DestroyedEngineNoLongerObservesTheSchedule) {
    addIdle("a.kra");
    alignas(SchedulerEngine) std::array<std::byte, sizeof(SchedulerEngine)> place;
    const EngineServices services{clock, launcher, outcomes, store, messages, listener, runs};
    std::destroy_at(new (place.data()) SchedulerEngine(entries, policy, services));
    place.fill({}); // notifying the destroyed engine would crash
    entries.remove(0);
    EXPECT_TRUE(entries.empty());
}

TEST_F(Engine, SuspensionStartsNothingAndResumingSkipsMissedRuns) {
    addIdle("a.kra", ScheduleKind::Hourly);
    engine.recomputeAll(at(0));
    EXPECT_EQ(entries[0].nextRun, at(3600));
    log.clear();

    engine.setSuspended(true);
    EXPECT_TRUE(engine.state().suspended);
    EXPECT_TRUE(policy.suspended);
    EXPECT_THAT(log, ElementsAre("redraw", "show suspended"));
    EXPECT_EQ(tickAt(3600), TickResult());
    EXPECT_EQ(entries[0].running, 0);

    clock.set(at(3601));
    engine.setSuspended(false);
    EXPECT_FALSE(policy.suspended);
    EXPECT_THAT(log, ElementsAre("redraw", "show resumed"));
    EXPECT_EQ(entries[0].nextRun, at(7200));
}

TEST_F(Engine, RunningEntriesEndNormallyWhileSuspended) {
    addDue("a.kra");
    addRunning("b.kra", 1).nextRun = at(3);
    engine.setSuspended(true);
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[1].nextRun, at(3));
    EXPECT_TRUE(finishAt(5, 1, {"done", 0}));
    EXPECT_EQ(entries[1].lastResult, "done");
}

TEST_F(Engine, TestCommandShowsADueEntryAsRunningUntilTheProgramRestarts) {
    addDue("a.kra");
    addIdle("b.kra");
    addDue("c.kra");
    policy.suspended = true;
    clock.set(at(-1));
    engine.testTick();
    EXPECT_EQ(entries[0].running, 0);
    clock.set(at(2));
    engine.testTick();
    EXPECT_THAT(log, ElementsAre("redraw")) << "must not launch or save";
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[0].runNumber, 1);
    EXPECT_EQ(entries[0].runStart, at(2));
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[2].waitingSince, at(2)) << "conflict rules apply";

    policy.suspended = false;
    tickAt(100);
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[2].running, 0);

    engine.resetAll(at(200));
    entries[0].nextRun = at(200);
    tickAt(200);
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw"));
}

TEST_F(Engine, AcceptsExtremeValuesInEveryField) {
    std::mt19937 random(20261121);
    const std::int32_t odd[] = {lowest, lowest + 1, -60, -1, 0, 1, 59, 60, highest - 1, highest};
    const auto pick = [&] { return odd[random() % std::size(odd)]; };
    for (int round = 0; round < 1000; ++round) {
        entries.clear();
        for (const char* const path : {"a.kra", "run:b", "c.kra"}) {
            ScheduledProject& entry =
                addIdle(path, static_cast<ScheduleKind>(random() % (scheduler::kindCount + 2) - 1));
            for (TimeValue* time : {&entry.time, &entry.waitingSince, &entry.runStart, &entry.nextRun})
                *time = TimeValue(pick());
            for (std::int32_t* number : {&entry.minutes, &entry.afterIndex, &entry.dayOfMonth,
                                         &entry.runNumber, &entry.retryIntervalMinutes})
                *number = pick();
            for (std::uint32_t* number : {&entry.retryLimit, &entry.retriesDone, &policy.waitTime})
                *number = static_cast<std::uint32_t>(pick());
            entry.running = entry.disabled = static_cast<std::uint8_t>(random() % 3);
        }
        policy.runMultiple = random() % 2 == 0;
        clock.set(TimeValue(pick()));
        engine.setSuspended(random() % 2 == 0);
        engine.onTimer(TimeValue(pick()));
        engine.runEntry(0, TimeValue(pick()), true);
        EXPECT_TRUE(finishAt(0, static_cast<std::uint32_t>(entries[0].runNumber), {"", 1}));
    }
}

} // namespace
} // namespace scheduler
