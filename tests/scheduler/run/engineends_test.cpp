#include "tests/scheduler/run/enginefixture.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;

// System errors

TEST_F(SchedulerEngineTest, ThreadThatCannotStartEndsTheRunWithoutAMessage) {
    launcher.threadsStart = false;
    addDue("a.kra");
    entries[0].retryLimit = 3;
    entries[0].retriesDone = 1;
    addFollower("b.kra", 0, 2);
    tickAt(5);
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "save", "redraw"));
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[0].lastRun, at(5));
    EXPECT_EQ(entries[0].lastResult, systemError);
    EXPECT_EQ(entries[0].retriesDone, 0u) << "it is not retried";
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[1].nextRun, at(5 + 120)) << "the chain goes on";
}

TEST_F(SchedulerEngineTest, LaunchThatFailsForAnyReasonEndsTheRunTheSameWay) {
    addDue("a.kra");
    for (const std::exception_ptr& reason :
         {std::make_exception_ptr(std::bad_alloc()), std::make_exception_ptr(std::length_error("too long")),
          std::make_exception_ptr(std::runtime_error("too complex"))}) {
        launcher.failure = reason;
        entries[0].nextRun = at(5);
        entries[0].lastResult.clear();
        tickAt(5);
        EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "save", "redraw"));
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastResult, systemError);
    }
}

TEST_F(SchedulerEngineTest, WithoutMemoryForTheReasonTheRunEndsNevertheless) {
    policy.waitTime = 1;
    launcher.failure = std::make_exception_ptr(std::bad_alloc());
    addDue("a.kra");
    addRunning("running", 1);
    log.reserve(10);
    clock.set(at(1000));
    for (const bool conflicts : {false, true}) {
        log.clear();
        entries[0].nextRun = at(0);
        entries[0].waitingSince = at(1);
        policy.runMultiple = !conflicts;
        {
            const test::RefusedAllocations refused;
            EXPECT_NO_THROW(engine.onTimer(at(1000)));
        }
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastRun, at(1000));
        EXPECT_EQ(entries[0].nextRun, TimeValue::never());
        EXPECT_THAT(log, ElementsAre("save", "redraw"));
    }
}

TEST_F(SchedulerEngineTest, WithoutMemoryToTellOfItAManualRunEndsNevertheless) {
    launcher.failure = std::make_exception_ptr(std::bad_alloc());
    ON_CALL(messages, showNotice(_)).WillByDefault([](const std::string&) { throw std::bad_alloc(); });
    EXPECT_CALL(messages, showNotice(_));
    addIdle("a.kra");
    EXPECT_NO_THROW(engine.runEntry(0, at(5), true));
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[0].lastResult, systemError);
}

TEST_F(SchedulerEngineTest, ManualFailureIsShownBeforeItIsRecorded) {
    launcher.threadsStart = false;
    addIdle("a.kra");
    clock.set(at(50));
    EXPECT_CALL(messages, showNotice(systemError)).WillOnce([this](const std::string&) {
        EXPECT_EQ(entries[0].running, 1);
        EXPECT_THAT(log, ElementsAre("launch a.kra as run 1"));
    });
    engine.runEntry(0, at(5), true);
    EXPECT_EQ(entries[0].lastResult, systemError);
    EXPECT_EQ(entries[0].lastRun, at(5));
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw", "save"));
}

TEST_F(SchedulerEngineTest, ManualFailureEndsWhenItWasStartedHoweverLongItsNoticeIsShown) {
    launcher.threadsStart = false;
    ScheduledProject hourly = idleEntry("a.kra");
    hourly.kind = ScheduleKind::Hourly;
    add(hourly);
    addFollower("b.kra", 0, 10);
    EXPECT_CALL(messages, showNotice(_)).WillOnce([this](const std::string&) { clock.set(at(3 * 3600)); });
    engine.runEntry(0, at(5), true);
    EXPECT_EQ(entries[0].lastRun, at(5));
    EXPECT_EQ(entries[0].nextRun, computeNextRun(engine.state(), hourly, at(5), clock));
    EXPECT_LE(entries[0].nextRun, at(5 + 3600));
    EXPECT_EQ(entries[1].nextRun, at(5 + 600));
}

// The end of a run

TEST_F(SchedulerEngineTest, EndIsRecordedWithTheOutcomeThatWasLeft) {
    addDue("a.kra");
    tickAt(10);
    EXPECT_TRUE(finishAt(99, 1, {"7 pages", 0}));
    EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save"));
    EXPECT_THAT(outcomes.left, IsEmpty());
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[0].lastRun, at(10)) << "the run's start";
    EXPECT_EQ(entries[0].lastResult, "7 pages");
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
}

TEST_F(SchedulerEngineTest, NoOutcomeIsAGoodOne) {
    addDue("a.kra");
    entries[0].lastResult = "old";
    entries[0].retryLimit = 3;
    tickAt(0);
    EXPECT_TRUE(engine.onRunFinished(1));
    EXPECT_EQ(entries[0].lastResult, "");
    EXPECT_EQ(entries[0].retriesDone, 0u);
}

TEST_F(SchedulerEngineTest, OutcomeThatCannotBeReadIsAMissingOne) {
    for (const std::exception_ptr& reason : {std::make_exception_ptr(std::bad_alloc()),
                                             std::make_exception_ptr(std::runtime_error("no outcome"))}) {
        entries.clear();
        addRunning("a.kra", 1).retryLimit = 1;
        entries[0].lastResult = "old";
        addFollower("b.kra", 0, 1);
        outcomes.failure = reason;
        EXPECT_TRUE(finishAt(9, 1, {"cannot be read", 1}));
        EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save"));
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastResult, "");
        EXPECT_EQ(entries[0].retriesDone, 0u) << "it counts as a good run";
        EXPECT_EQ(entries[1].nextRun, at(9 + 60));
    }
}

TEST_F(SchedulerEngineTest, EndWithANumberNobodyHasIsIgnored) {
    addRunning("a.kra", 1);
    addIdle("b.kra");
    entries[1].runNumber = 2;
    const ScheduledProject before = entries[0];
    for (const std::uint32_t number : {0u, 2u, 3u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(finishAt(1, number, {"foreign", 1})) << number;
        EXPECT_THAT(log, IsEmpty()) << "its outcome is not even read";
    }
    EXPECT_EQ(entries[0], before);
}

TEST_F(SchedulerEngineTest, EndOfADeletedEntryIsIgnored) {
    addDue("a.kra");
    tickAt(0);
    entries.remove(0);
    EXPECT_FALSE(finishAt(1, 1));
}

TEST_F(SchedulerEngineTest, EndIsTiedToTheNumberWhenEntriesMoved) {
    policy.runMultiple = true;
    addIdle("a.kra");
    addDue("b.kra");
    addDue("c.kra");
    tickAt(0);
    entries.remove(0);
    EXPECT_TRUE(finishAt(1, 2, {"of c", 0}));
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[1].lastResult, "of c");
}

TEST_F(SchedulerEngineTest, FirstOfTwoEntriesWithOneNumberEnds) {
    addRunning("a.kra", 3);
    addRunning("b.kra", 3);
    EXPECT_TRUE(finishAt(1, 3));
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[1].running, 1);
}

TEST_F(SchedulerEngineTest, NextRunIsComputedFromTheEnd) {
    ScheduledProject hourly = idleEntry("a.kra");
    hourly.kind = ScheduleKind::Hourly;
    hourly.nextRun = at(0);
    add(hourly);
    tickAt(0);
    EXPECT_TRUE(finishAt(3 * 3600, 1));
    EXPECT_EQ(entries[0].nextRun, computeNextRun(engine.state(), hourly, at(3 * 3600), clock));
    EXPECT_GT(entries[0].nextRun, at(3 * 3600));
}

TEST_F(SchedulerEngineTest, JustOnceStaysInTheScheduleWithoutANextRun) {
    ScheduledProject once = idleEntry("a.kra");
    once.kind = ScheduleKind::Once;
    once.time = at(0);
    once.nextRun = at(0);
    add(once);
    tickAt(0);
    EXPECT_TRUE(finishAt(1, 1));
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
}

// Command lines of their own

TEST_F(SchedulerEngineTest, OwnCommandLineWithoutRetriesEndsWithAnEmptyResult) {
    addDue("run:backup.exe");
    entries[0].lastResult = "old";
    addFollower("b.kra", 0, 1);
    tickAt(0);
    EXPECT_TRUE(finishAt(4, 1, {"never read", 0}));
    EXPECT_THAT(log, ElementsAre("redraw", "save")) << "no outcome is read";
    EXPECT_EQ(entries[0].lastResult, "");
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[1].nextRun, at(4 + 60)) << "the chain is woken";
}

TEST_F(SchedulerEngineTest, OwnCommandLineCountsAsFailedWhileRetriesLast) {
    addDue("run:backup.exe");
    entries[0].retryLimit = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(4, 1));
    EXPECT_EQ(entries[0].retriesDone, 1u);
    EXPECT_EQ(entries[0].nextRun, at(4 + 15 * 60 + 5));
    tickAt(4 + 15 * 60 + 5);
    EXPECT_TRUE(finishAt(2000, 1));
    EXPECT_EQ(entries[0].retriesDone, 0u);
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
}

TEST_F(SchedulerEngineTest, PrefixInCapitalsHasAnOutcome) {
    addDue("RUN:backup.exe");
    tickAt(0);
    EXPECT_TRUE(finishAt(4, 1, {"read", 0}));
    EXPECT_EQ(entries[0].lastResult, "read");
}

} // namespace
} // namespace scheduler
