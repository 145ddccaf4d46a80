// What the tests of the engine have in common.
#pragma once

#include "scheduler/run/engine.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeenginelistener.h"
#include "tests/support/fakeoutcomesource.h"
#include "tests/support/fakerunlauncher.h"
#include "tests/support/loggingstore.h"
#include "tests/support/mockusermessages.h"
#include "tests/support/redrawlog.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace scheduler {

inline const std::string conflict = "Could not run on schedule; another project was already running.";
inline const std::string systemError = "A system error prevented the project from running.";

inline constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

inline constexpr std::int32_t startSeconds = 1'781'500'000; // a moment in June 2026

constexpr base::TimeValue at(std::int32_t secondsFromStart) {
    return base::TimeValue(startSeconds + secondsFromStart);
}

/// The engine between fakes of all that it reaches, whose calls are noted in `log` in their order.
class SchedulerEngineTest : public testing::Test {
protected:
    /// Follows nothing, so that nothing but a test makes it due.
    static ScheduledProject idleEntry(const std::string& path) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::AfterProject;
        entry.afterIndex = -1;
        entry.nextRun = base::TimeValue::never();
        return entry;
    }

    ScheduledProject& add(ScheduledProject entry) {
        entries.append(std::move(entry));
        log.clear();
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

    TickResult tickAt(std::int32_t secondsFromStart) {
        clock.set(at(secondsFromStart));
        log.clear();
        return engine.onTimer(at(secondsFromStart));
    }
    bool finishAt(std::int32_t secondsFromStart, std::uint32_t runNumber, RunOutcome outcome = {}) {
        clock.set(at(secondsFromStart));
        outcomes.left[runNumber] = std::move(outcome);
        log.clear();
        return engine.onRunFinished(runNumber);
    }

    test::EventLog log;
    test::FakeClock clock{at(0)};
    test::FakeRunLauncher launcher{log};
    test::FakeOutcomeSource outcomes{log};
    test::LoggingStore store{log};
    testing::StrictMock<test::MockUserMessages> messages;
    test::FakeEngineListener listener{log};
    ScheduleList entries;
    test::RedrawLog redraws{entries, log};
    RunPolicy policy;
    SchedulerEngine engine{entries, policy, {clock, launcher, outcomes, store, messages, listener}};
};

} // namespace scheduler
