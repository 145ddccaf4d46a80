#include "tests/scheduler/run/enginefixture.h"
#include "tests/support/schedulekinds.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::ElementsAre;
using testing::IsEmpty;

class EngineEnds : public SchedulerEngineTest {};

TEST_F(EngineEnds, FailedScheduledStartIsASuccessfulRunWithTheErrorAsResult) {
    addDue("a.kra");
    addFollower("b.kra", 0, 2);
    for (const std::exception_ptr& reason : {std::exception_ptr(), std::make_exception_ptr(std::bad_alloc()),
                                             std::make_exception_ptr(std::length_error("too long")),
                                             std::make_exception_ptr(std::runtime_error("too complex"))}) {
        launcher.threadsStart = false;
        launcher.failure = reason;
        entries[0].nextRun = at(5);
        entries[0].lastResult.clear();
        entries[0].retryLimit = 3;
        entries[0].retriesDone = 1;
        entries[1].nextRun = TimeValue::never();
        EXPECT_EQ(tickAt(5), (TickResult{.changed = true}));
        EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "save", "redraw"));
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastRun, at(5));
        EXPECT_EQ(entries[0].lastResult, systemError);
        EXPECT_EQ(entries[0].retriesDone, 0u) << "must not be retried";
        EXPECT_EQ(entries[0].nextRun, TimeValue::never());
        EXPECT_EQ(entries[1].nextRun, at(5 + 120)) << "the follower must be scheduled";
    }
}

TEST_F(EngineEnds, FailedManualStartIsReportedAndEndsAtItsStartTime) {
    launcher.threadsStart = false;
    addIdle("a.kra", ScheduleKind::Hourly);
    addFollower("b.kra", 0, 10);
    EXPECT_CALL(messages, showNotice(systemError)).WillOnce([this](const std::string&) {
        EXPECT_EQ(entries[0].running, 1);
        EXPECT_THAT(log, ElementsAre("launch a.kra as run 1"));
        clock.set(at(3 * 3600)); // the notice is closed three hours later
    });
    engine.runEntry(0, at(5), true);
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw", "save"));
    EXPECT_EQ(entries[0].lastResult, systemError);
    EXPECT_EQ(entries[0].lastRun, at(5));
    EXPECT_EQ(entries[0].nextRun, at(3600));
    EXPECT_EQ(entries[1].nextRun, at(5 + 600));
}

TEST_F(EngineEnds, MissingOrUnreadableOutcomeCountsAsSuccess) {
    for (const std::exception_ptr& reason : {std::exception_ptr(), std::make_exception_ptr(std::bad_alloc()),
                                             std::make_exception_ptr(std::runtime_error("no outcome"))}) {
        entries.clear();
        ScheduledProject& entry = addRunning("a.kra", 1);
        entry.lastResult = "old";
        entry.retryLimit = 3;
        entry.retriesDone = 2;
        addFollower("b.kra", 0, 1);
        outcomes.failure = reason;
        clock.set(at(9));
        EXPECT_TRUE(engine.onRunFinished(1));
        EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save"));
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastResult, "");
        EXPECT_EQ(entries[0].retriesDone, 0u);
        EXPECT_EQ(entries[1].nextRun, at(9 + 60));
    }
}

TEST_F(EngineEnds, EndOfARunGoesToTheFirstRunningEntryWithItsNumberOrIsIgnored) {
    for (const std::int32_t number : {9, 1, 2, 2})
        addRunning("a.kra", number);
    addIdle("idle.kra").runNumber = 3;
    entries.remove(0);
    for (const std::uint32_t number : {0u, 3u, 9u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(finishAt(1, number, {"foreign", 1})) << number;
        EXPECT_THAT(log, IsEmpty()) << "must not read the outcome";
    }
    EXPECT_TRUE(finishAt(1, 2, {"the second", 0}));
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[1].lastResult, "the second");
    EXPECT_EQ(entries[2].running, 1);
}

TEST_F(EngineEnds, EndOfARunRecordsTheOutcomeAndComputesTheNextRun) {
    for (const auto& [kind, nextRun] : {std::pair{ScheduleKind::AfterProject, TimeValue::never()},
                                        {ScheduleKind::Hourly, at(4 * 3600)},
                                        {ScheduleKind::Once, TimeValue::never()}}) {
        entries.clear();
        addDue("a.kra", kind).time = at(0);
        tickAt(10);
        EXPECT_TRUE(finishAt(3 * 3600, 1, {"7 pages", 0}));
        EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save"));
        ASSERT_EQ(entries.size(), 1u);
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastRun, at(10)) << "must be the start of the run";
        EXPECT_EQ(entries[0].lastResult, "7 pages");
        EXPECT_EQ(entries[0].nextRun, nextRun);
    }
}

TEST_F(EngineEnds, CommandLineHasNoResultAndCountsAsFailedWhileRetriesRemain) {
    ScheduledProject& entry = addRunning("run:backup.exe", 1);
    entry.lastResult = "old";
    entry.retryLimit = 1;
    addFollower("b.kra", 0, 1);
    EXPECT_TRUE(finishAt(4, 1, {"never read", 0}));
    EXPECT_THAT(log, ElementsAre("redraw", "save")) << "must not read an outcome";
    EXPECT_EQ(entries[0].lastResult, "");
    EXPECT_EQ(entries[0].retriesDone, 1u);
    EXPECT_EQ(entries[0].nextRun, at(4 + 15 * 60 + 5));
    EXPECT_EQ(entries[1].nextRun, TimeValue::never()) << "must wait for the retries";
    tickAt(2000);
    EXPECT_TRUE(finishAt(2001, 1));
    EXPECT_EQ(entries[0].retriesDone, 0u);
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[1].nextRun, at(2001 + 60));
}

TEST_F(EngineEnds, RetryIsFiveSecondsAfterItsIntervalUntilTheLimit) {
    constexpr std::int32_t never = 0;
    const struct {
        std::uint32_t limit, done, error;
        std::int32_t interval;
        std::uint32_t doneThen;
        std::int32_t nextRun;
    } rows[] = {
        {0, 0, 1, 15, 0, never},
        {1, 0, 1, 15, 1, 905},
        {1, 1, 1, 15, 0, never},
        {2, 1, 0, 15, 0, never},
        {0xFFFFFFFF, 0x80000000, 0x80000000, 1, 0x80000001, 65},
        {1, 0xFFFFFFFF, 1, 1, 0, never},
        {1, 0, 1, highest, 1, -55}, // wraps around
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.limit) + " " + testing::PrintToString(row.done));
        entries.clear();
        ScheduledProject& entry = addRunning("a.kra", 1);
        entry.retryLimit = row.limit;
        entry.retriesDone = row.done;
        entry.retryIntervalMinutes = row.interval;
        EXPECT_TRUE(finishAt(0, 1, {"", row.error}));
        EXPECT_EQ(entry.retriesDone, row.doneThen);
        EXPECT_EQ(entry.nextRun, row.nextRun == never ? TimeValue::never() : at(row.nextRun));
    }
}

TEST_F(EngineEnds, ListenerIsNotifiedBeforeTheLaunchAndAfterTheSave) {
    runs.log = &log;
    addDue("a.kra");
    addIdle("b.kra").retryLimit = 1;
    tickAt(10);
    EXPECT_THAT(log, ElementsAre("started: a.kra as run 1", "launch a.kra as run 1", "redraw"));
    EXPECT_TRUE(finishAt(70, 1, {"7 pages", 0}));
    EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save",
                                 "ended: a.kra as run 1 after 60 s with error 0"));
    log.clear();
    engine.runEntry(1, at(80), true);
    EXPECT_THAT(log, ElementsAre("started by hand: b.kra as run 1", "launch b.kra as run 1", "redraw"));
    EXPECT_TRUE(finishAt(85, 1, {"failed", 5}));
    EXPECT_EQ(log.back(), "ended: b.kra as run 1 after 5 s with error 5");
}

TEST_F(EngineEnds, ListenerIsNotifiedOfRunsThatNeverStarted) {
    runs.log = &log;
    launcher.threadsStart = false;
    addDue("a.kra");
    tickAt(10);
    EXPECT_THAT(log, ElementsAre("started: a.kra as run 1", "launch a.kra as run 1", "save",
                                 "system error: a.kra as run 1 after 0 s with error 0", "redraw"));
    policy.waitTime = 0;
    addRunning("b.kra", 4);
    entries[0].nextRun = at(20);
    tickAt(20);
    EXPECT_THAT(log, IsEmpty());
    tickAt(80);
    EXPECT_THAT(log, ElementsAre("started: a.kra as run 5", "save",
                                 "gave up: a.kra as run 5 after 0 s with error 0", "redraw"));
}

TEST_F(EngineEnds, ListenerIsNotNotifiedOfTestRunsOrIgnoredEnds) {
    runs.log = &log;
    addDue("a.kra");
    engine.testTick();
    EXPECT_THAT(log, ElementsAre("redraw"));
    EXPECT_FALSE(finishAt(5, 2));
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(EngineEnds, OnlyTheFollowersAreScheduled) {
    addFollower("before.kra", 2, 1);
    addFollower("disabled.kra", 2, 10);
    entries[1].disabled = 1;
    addRunning("a.kra", 1).afterIndex = 2;
    addFollower("at once.kra", 2, 0);
    addFollower("minutes wrap around.kra", 2, highest);
    addFollower("down to zero.kra", 2, lowest);
    addRunning("running.kra", 8).afterIndex = 2;
    addFollower("of another.kra", 3, 3);
    addIdle("hourly.kra", ScheduleKind::Hourly).afterIndex = 2;
    addIdle("unknown.kra", test::unknownKind).afterIndex = 2;
    EXPECT_TRUE(finishAt(50, 1));
    const TimeValue never = TimeValue::never();
    const TimeValue expected[] = {at(50 + 60), at(50 + 600), at(50), at(50), at(50 - 60),
                                  at(50),      at(50),       never,  never,  never};
    for (std::size_t i = 0; i < entries.size(); ++i)
        EXPECT_EQ(entries[i].nextRun, expected[i]) << entries[i].path;
    EXPECT_TRUE(finishAt(60, 8));
    EXPECT_EQ(entries[6].nextRun, TimeValue::never()) << "must wait for the entry that it follows";
}

} // namespace
} // namespace scheduler
