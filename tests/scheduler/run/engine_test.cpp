#include "scheduler/run/engine.h"
#include "tests/support/allocations.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeenginelistener.h"
#include "tests/support/fakeoutcomesource.h"
#include "tests/support/fakerunlauncher.h"
#include "tests/support/mockusermessages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <new>
#include <random>
#include <stdexcept>

namespace scheduler {
namespace {

using base::TimeSpan;
using base::TimeValue;
using test::EventLog;
using test::FakeEngineListener;
using test::FakeOutcomeSource;
using test::FakeRunLauncher;
using test::MockUserMessages;
using testing::_;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrictMock;

const std::string conflict = "Could not run on schedule; another project was already running.";
const std::string systemError = "A system error prevented the project from running.";

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

constexpr std::int32_t startSeconds = 1'781'500'000; // a moment in June 2026

constexpr TimeValue at(std::int32_t secondsFromStart) {
    return TimeValue(startSeconds + secondsFromStart);
}

class SchedulerEngineTest : public testing::Test {
protected:
    class RecordingStore : public ScheduleStore {
    public:
        explicit RecordingStore(EventLog& log) : log_(log) {}
        bool save(const ScheduleList&) override {
            log_.push_back("save");
            return true;
        }

    private:
        EventLog& log_;
    };

    /// Follows nothing, so that nothing but a test makes it due.
    static ScheduledProject idleEntry(const std::string& path) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::AfterProject;
        entry.afterIndex = -1;
        entry.nextRun = TimeValue::never();
        return entry;
    }

    ScheduledProject& add(ScheduledProject entry) {
        entries.append(std::move(entry));
        return entries[entries.size() - 1];
    }
    void addIdle(const std::string& path) { add(idleEntry(path)); }
    void addDue(const std::string& path) { add(idleEntry(path)).nextRun = at(0); }
    void addFollower(const std::string& path, std::int32_t afterIndex, std::int32_t minutes) {
        ScheduledProject& entry = add(idleEntry(path));
        entry.afterIndex = afterIndex;
        entry.minutes = minutes;
    }
    ScheduledProject& addRunning(const std::string& path, std::int32_t runNumber) {
        ScheduledProject& entry = add(idleEntry(path));
        entry.running = 1;
        entry.runNumber = runNumber;
        entry.runStart = at(-1000);
        return entry;
    }

    void tickAt(std::int32_t secondsFromStart) {
        clock.set(at(secondsFromStart));
        log.clear();
        engine.onTimer(at(secondsFromStart));
    }
    bool finishAt(std::int32_t secondsFromStart, std::uint32_t runNumber, RunOutcome outcome = {}) {
        clock.set(at(secondsFromStart));
        outcomes.left[runNumber] = std::move(outcome);
        log.clear();
        return engine.onRunFinished(runNumber);
    }

    EventLog log;
    test::FakeClock clock{at(0)};
    FakeRunLauncher launcher{log};
    FakeOutcomeSource outcomes{log};
    RecordingStore store{log};
    StrictMock<MockUserMessages> messages;
    FakeEngineListener listener{log};
    ScheduleList entries;
    RunPolicy policy;
    SchedulerEngine engine{entries, policy, {clock, launcher, outcomes, store, messages, listener}};
};

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

TEST_F(SchedulerEngineTest, DueEntryIsStartedWithItsCommandLine) {
    addDue("a.kra");
    tickAt(3);
    EXPECT_THAT(log, ElementsAre("command line of a.kra", "launch 1", "redraw")) << "starting does not save";
    ASSERT_EQ(launcher.launched.size(), 1u);
    EXPECT_EQ(launcher.launched[0].commandLine, "a.kra as run 1") << "composed when the number was known";
    EXPECT_EQ(launcher.launched[0].runNumber, 1u);
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[0].runStart, at(3));
    EXPECT_EQ(entries[0].runNumber, 1);
    EXPECT_EQ(entries[0].waitingSince, TimeValue());
    EXPECT_EQ(entries[0].lastRun, TimeValue());
}

TEST_F(SchedulerEngineTest, RunningEntryIsNotStartedAgain) {
    addDue("a.kra");
    tickAt(0);
    tickAt(1);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(launcher.launched.size(), 1u);
}

TEST_F(SchedulerEngineTest, IdleTickDoesNothing) {
    addIdle("a.kra");
    tickAt(0);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(SchedulerEngineTest, SideBySideAllDueEntriesStartInOrder) {
    policy.runMultiple = true;
    addDue("a.kra");
    addIdle("b.kra");
    addDue("c.kra");
    addDue("d.kra");
    tickAt(0);
    EXPECT_THAT(log, ElementsAre("command line of a.kra", "launch 1", "redraw", "command line of c.kra",
                                 "launch 2", "redraw", "command line of d.kra", "launch 3", "redraw"));
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

TEST_F(SchedulerEngineTest, CountIsReadAfreshOnEachStepOfATick) {
    policy.runMultiple = true;
    addDue("a.kra");
    launcher.onLaunch = [this] {
        if (entries.size() < 3)
            addDue("later.kra");
    };
    tickAt(0);
    EXPECT_EQ(launcher.launched.size(), 3u) << "entries that came during the tick belong to it";

    entries.clear();
    launcher.launched.clear();
    launcher.onLaunch = [this] {
        while (entries.size() > 1)
            entries.remove(1);
    };
    addDue("a.kra");
    addDue("b.kra");
    addDue("c.kra");
    tickAt(1);
    EXPECT_EQ(launcher.launched.size(), 1u) << "what is gone is not started";
}

// Waiting

TEST_F(SchedulerEngineTest, TwoDueInTheSameSecondTheFirstStartsTheSecondWaits) {
    addDue("a.kra");
    addDue("b.kra");
    tickAt(5);
    EXPECT_THAT(log, ElementsAre("command line of a.kra", "launch 1", "redraw"));
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[1].waitingSince, at(5));
    EXPECT_TRUE(engine.isDue(1, at(5))) << "it stays due";
}

TEST_F(SchedulerEngineTest, WaitingEntryIsLookedAtOnEveryTick) {
    addRunning("a.kra", 1);
    addDue("b.kra");
    tickAt(0);
    EXPECT_THAT(log, IsEmpty()) << "beginning to wait draws nothing";
    tickAt(1);
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
    tickAt(77);
    EXPECT_THAT(log, ElementsAre("redraw", "save", "redraw")) << "nothing is started, no outcome is read";
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
    EXPECT_EQ(entries[1].nextRun, computeNextRun(engine.state(), hourly, at(60)));
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
    EXPECT_THAT(log, ElementsAre("command line of b.kra", "launch 1", "redraw"));
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

// Manual runs

TEST_F(SchedulerEngineTest, ManualRunNeverWaits) {
    addRunning("a.kra", 1);
    addIdle("b.kra");
    entries[1].disabled = 1;
    engine.runEntry(1, at(4), true);
    EXPECT_THAT(log, ElementsAre("command line of b.kra", "launch 2", "redraw"));
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

// System errors

TEST_F(SchedulerEngineTest, ThreadThatCannotStartEndsTheRunWithoutAMessage) {
    launcher.threadsStart = false;
    addDue("a.kra");
    entries[0].retryLimit = 3;
    entries[0].retriesDone = 1;
    addFollower("b.kra", 0, 2);
    tickAt(5);
    EXPECT_THAT(log, ElementsAre("command line of a.kra", "launch 1", "redraw", "save", "redraw"));
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[0].lastRun, at(5));
    EXPECT_EQ(entries[0].lastResult, systemError);
    EXPECT_EQ(entries[0].retriesDone, 0u) << "it is not retried";
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[1].nextRun, at(5 + 120)) << "the chain goes on";
}

TEST_F(SchedulerEngineTest, RequestThatCannotBeMadeEndsTheRunTheSameWayForWhateverReason) {
    addDue("a.kra");
    for (const std::exception_ptr& reason :
         {std::make_exception_ptr(std::bad_alloc()), std::make_exception_ptr(std::length_error("too long")),
          std::make_exception_ptr(std::runtime_error("too complex"))}) {
        launcher.commandLineFailure = reason;
        entries[0].nextRun = at(5);
        entries[0].lastResult.clear();
        tickAt(5);
        EXPECT_THAT(log, ElementsAre("redraw", "save", "redraw"));
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastResult, systemError);
    }
}

TEST_F(SchedulerEngineTest, ManualFailureIsShownBeforeItIsRecorded) {
    launcher.threadsStart = false;
    addIdle("a.kra");
    clock.set(at(50));
    EXPECT_CALL(messages, showNotice(systemError)).WillOnce([this](const std::string&) {
        EXPECT_EQ(entries[0].running, 1);
        EXPECT_THAT(log, ElementsAre("command line of a.kra", "launch 1"));
    });
    engine.runEntry(0, at(5), true);
    EXPECT_EQ(entries[0].lastResult, systemError);
    EXPECT_EQ(entries[0].lastRun, at(5));
    EXPECT_THAT(log, ElementsAre("command line of a.kra", "launch 1", "redraw", "save", "redraw"));
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
    EXPECT_EQ(entries[0].nextRun, computeNextRun(engine.state(), hourly, at(5)));
    EXPECT_LE(entries[0].nextRun, at(5 + 3600));
    EXPECT_EQ(entries[1].nextRun, at(5 + 600));
}

TEST_F(SchedulerEngineTest, RunThatFailedIsFoundAgainWhenEntriesMovedDuringTheNotice) {
    launcher.threadsStart = false;
    addIdle("a.kra");
    addIdle("b.kra");
    EXPECT_CALL(messages, showNotice(_)).WillOnce([this](const std::string&) { entries.remove(0); });
    engine.runEntry(1, at(5), true);
    EXPECT_EQ(entries[0].path, "b.kra");
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[0].lastResult, systemError);

    EXPECT_CALL(messages, showNotice(_)).WillOnce([this](const std::string&) { entries.clear(); });
    engine.runEntry(0, at(6), true);
    EXPECT_TRUE(entries.empty());
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
    EXPECT_EQ(entries[0].nextRun, computeNextRun(engine.state(), hourly, at(3 * 3600)));
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

// Retries

TEST_F(SchedulerEngineTest, FailedRunIsRetriedUpToItsLimit) {
    addDue("a.kra");
    entries[0].retryLimit = 2;
    addFollower("b.kra", 0, 10);
    constexpr std::int32_t interval = 15 * 60 + 5;

    tickAt(0);
    EXPECT_TRUE(finishAt(100, 1, {"failed", 1}));
    EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save"));
    EXPECT_EQ(entries[0].nextRun, at(100 + interval));
    EXPECT_EQ(entries[0].retriesDone, 1u);
    EXPECT_EQ(entries[0].lastResult, "failed");
    EXPECT_EQ(entries[1].nextRun, TimeValue::never()) << "the chain sleeps while a run is retried";

    tickAt(100 + interval - 1);
    EXPECT_EQ(entries[0].running, 0);
    tickAt(100 + interval);
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_TRUE(finishAt(2000, 1, {"failed again", 1}));
    EXPECT_EQ(entries[0].nextRun, at(2000 + interval));
    EXPECT_EQ(entries[0].retriesDone, 2u);

    tickAt(2000 + interval);
    EXPECT_TRUE(finishAt(4000, 1, {"failed for good", 1}));
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[0].retriesDone, 0u);
    EXPECT_EQ(entries[1].nextRun, at(4000 + 600));
}

TEST_F(SchedulerEngineTest, GoodRunForgetsEarlierRetries) {
    addDue("a.kra");
    entries[0].retryLimit = 2;
    entries[0].retriesDone = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(1, 1, {"", 0}));
    EXPECT_EQ(entries[0].retriesDone, 0u);
}

TEST_F(SchedulerEngineTest, RetriesAreCountedUnsigned) {
    struct Row {
        std::uint32_t limit, done, error;
        bool retried;
    };
    const Row rows[] = {
        {0, 0, 1, false},          {1, 0, 1, true},          {1, 1, 1, false},
        {1, 2, 1, false},          {0xFFFFFFFF, 7, 1, true}, {0xFFFFFFFF, 0x80000000, 1, true},
        {1, 0xFFFFFFFF, 1, false}, {1, 0, 0x80000000, true}, {1, 0, 0, false},
    };
    for (const Row& row : rows) {
        entries.clear();
        addRunning("a.kra", 1);
        entries[0].retryLimit = row.limit;
        entries[0].retriesDone = row.done;
        EXPECT_TRUE(finishAt(0, 1, {"", row.error}));
        EXPECT_EQ(entries[0].retriesDone, row.retried ? row.done + 1 : 0) << row.limit << " " << row.done;
    }
}

TEST_F(SchedulerEngineTest, RetryIntervalIsTheEntrysOwn) {
    for (const std::int32_t minutes : {0, 1, 90, -1}) {
        entries.clear();
        addRunning("a.kra", 1);
        entries[0].retryLimit = 1;
        entries[0].retryIntervalMinutes = minutes;
        EXPECT_TRUE(finishAt(10, 1, {"", 1}));
        EXPECT_EQ(entries[0].nextRun, at(10 + minutes * 60 + 5));
    }
}

// Chains

TEST_F(SchedulerEngineTest, FollowerIsDueItsMinutesAfterTheEndEvenWhenDisabled) {
    addDue("a.kra");
    addFollower("b.kra", 0, 10);
    entries[1].disabled = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(100, 1));
    EXPECT_EQ(entries[1].nextRun, at(100 + 600));
    tickAt(100 + 600);
    EXPECT_EQ(entries[1].running, 0) << "it does not run while disabled";
    entries[1].disabled = 0;
    tickAt(100 + 601);
    EXPECT_EQ(entries[1].running, 1);
}

TEST_F(SchedulerEngineTest, EveryFollowerIsWokenAndNobodyElse) {
    policy.runMultiple = true;
    addFollower("before.kra", 1, 1);
    addDue("a.kra");
    addFollower("at once.kra", 1, 0);
    addFollower("other.kra", 2, 3);
    addFollower("behind.kra", 1, 4);
    ScheduledProject hourly = idleEntry("hourly.kra");
    hourly.kind = ScheduleKind::Hourly;
    hourly.afterIndex = 1;
    add(hourly);
    ScheduledProject unknown = hourly;
    unknown.kind = static_cast<ScheduleKind>(6);
    add(unknown);
    addRunning("running.kra", 8).afterIndex = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(50, 9));
    EXPECT_EQ(entries[0].nextRun, at(50 + 60));
    EXPECT_EQ(entries[2].nextRun, at(50));
    EXPECT_EQ(entries[3].nextRun, TimeValue::never());
    EXPECT_EQ(entries[4].nextRun, at(50 + 240));
    EXPECT_EQ(entries[5].nextRun, TimeValue::never());
    EXPECT_EQ(entries[6].nextRun, TimeValue::never());
    EXPECT_EQ(entries[7].nextRun, at(50)) << "a running one, too";
    EXPECT_TRUE(finishAt(60, 8));
    EXPECT_EQ(entries[7].nextRun, TimeValue::never()) << "until its predecessor ends again";
}

TEST_F(SchedulerEngineTest, EntryThatFollowsItselfGoesOnForEver) {
    addDue("a.kra");
    entries[0].afterIndex = 0;
    entries[0].minutes = 2;
    tickAt(0);
    EXPECT_TRUE(finishAt(10, 1));
    EXPECT_EQ(entries[0].nextRun, at(10 + 120));
}

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
    EXPECT_THAT(log, IsEmpty());
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

TEST_F(SchedulerEngineTest, StateHasTheEnginesClock) {
    EXPECT_EQ(engine.state().clock, &clock);
    EXPECT_FALSE(engine.state().startupFlag);
    EXPECT_FALSE(engine.state().suspended);
}

// Values from a damaged file

TEST_F(SchedulerEngineTest, DelaysWrapAround) {
    addRunning("a.kra", 1).retryLimit = 1;
    entries[0].retryIntervalMinutes = highest;
    EXPECT_TRUE(finishAt(0, 1, {"", 1}));
    EXPECT_EQ(entries[0].nextRun, at(-60 + 5)) << "2147483647 minutes are -60 seconds";

    entries.clear();
    addRunning("a.kra", 1);
    addFollower("b.kra", 0, highest);
    addFollower("c.kra", 0, lowest);
    EXPECT_TRUE(finishAt(0, 1));
    EXPECT_EQ(entries[1].nextRun, at(-60));
    EXPECT_EQ(entries[2].nextRun, at(0));
}

TEST_F(SchedulerEngineTest, RunNumbersWrapAround) {
    policy.runMultiple = true;
    addRunning("a.kra", highest);
    addDue("b.kra");
    tickAt(0);
    EXPECT_EQ(entries[1].runNumber, lowest);
    EXPECT_TRUE(finishAt(1, 0x80000000u));
    EXPECT_EQ(entries[1].running, 0);
}

TEST_F(SchedulerEngineTest, NoValueOfAnyFieldIsTooOdd) {
    std::mt19937 random(20261121);
    const std::int32_t odd[] = {lowest, lowest + 1, -60,         -1,      0,           1,
                                59,     60,         highest - 1, highest, startSeconds};
    const auto pick = [&] { return odd[random() % std::size(odd)]; };
    EXPECT_CALL(messages, showNotice(_)).Times(testing::AnyNumber());
    for (int round = 0; round < 300; ++round) {
        entries.clear();
        for (int i = 0; i < 5; ++i) {
            ScheduledProject& entry = add(idleEntry(random() % 4 == 0 ? "run:x" : "a.kra"));
            entry.kind = static_cast<ScheduleKind>(static_cast<std::int32_t>(random() % 8) - 1);
            entry.time = TimeValue(pick());
            entry.minutes = pick();
            entry.afterIndex = static_cast<std::int32_t>(random() % 6) - 1;
            entry.dayOfMonth = pick();
            entry.running = static_cast<std::uint8_t>(random() % 3);
            entry.disabled = random() % 4 == 0 ? 255 : 0;
            entry.waitingSince = TimeValue(pick());
            entry.runStart = TimeValue(pick());
            entry.runNumber = pick();
            entry.nextRun = TimeValue(pick());
            entry.retryLimit = static_cast<std::uint32_t>(pick());
            entry.retriesDone = static_cast<std::uint32_t>(pick());
            entry.retryIntervalMinutes = pick();
        }
        policy = {false, static_cast<std::uint32_t>(pick()), random() % 2 == 0};
        launcher.threadsStart = random() % 4 != 0;
        for (int step = 0; step < 10; ++step) {
            clock.set(TimeValue(pick()));
            engine.onTimer(TimeValue(pick()));
            const std::uint32_t number = static_cast<std::uint32_t>(pick());
            outcomes.left[number] = {"", static_cast<std::uint32_t>(pick())};
            engine.onRunFinished(number);
            engine.runEntry(random() % 5, TimeValue(pick()), true);
            engine.setSuspended(random() % 2 == 0);
        }
        engine.resetAll(TimeValue(pick()));
        EXPECT_FALSE(engine.anyRunning());
        log.clear();
    }
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

// What it costs

TEST_F(SchedulerEngineTest, ATickWithNothingDueTakesNoMemory) {
    for (int i = 0; i < 100; ++i)
        addIdle("idle");
    const std::size_t before = test::allocationCount;
    engine.onTimer(at(0));
    EXPECT_EQ(test::allocationCount, before);
}

TEST_F(SchedulerEngineTest, ASweepOverTheScheduleReadsTheClockOnce) {
    class CountingClock : public base::Clock {
    public:
        TimeValue now() const override {
            ++reads;
            return at(0);
        }
        mutable int reads = 0;
    };
    const CountingClock counting;
    SchedulerEngine watched(entries, policy, {counting, launcher, outcomes, store, messages, listener});
    for (int i = 0; i < 100; ++i) {
        addIdle("calendar");
        entries[entries.size() - 1].kind = i % 2 == 0 ? ScheduleKind::Daily : ScheduleKind::Monthly;
    }
    watched.resetAll(at(0));
    EXPECT_EQ(counting.reads, 1);
    watched.recomputeAll(at(0));
    EXPECT_EQ(counting.reads, 2);
}

} // namespace
} // namespace scheduler
