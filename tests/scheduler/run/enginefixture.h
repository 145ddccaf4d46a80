#pragma once

#include "scheduler/run/engine.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeenginelistener.h"
#include "tests/support/fakeoutcomesource.h"
#include "tests/support/fakerunlauncher.h"
#include "tests/support/fakerunlistener.h"
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

/// The given number of seconds after noon (local time) on 15 June 2026.
inline base::TimeValue at(std::int32_t seconds) {
    return base::TimeValue(base::TimeValue::fromLocal(2026, 6, 15, 12, 0, 0, -1).seconds() + seconds);
}

/// Allocates no memory for the schedule.
struct LoggingStore : ScheduleStore {
    test::EventLog& log;
    explicit LoggingStore(test::EventLog& events) : log(events) {}
    void save(const ScheduleList&) override { log.push_back("save"); }
};

/// The engine with fakes, most of which record their calls in `log`.
class SchedulerEngineTest : public testing::Test {
protected:
    /// AfterProject entries follow no entry, so only the test can make them due.
    ScheduledProject& addIdle(const std::string& path, ScheduleKind kind = ScheduleKind::AfterProject) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = kind;
        entry.afterIndex = -1;
        entry.nextRun = base::TimeValue::never();
        entries.append(std::move(entry));
        log.clear();
        return entries[entries.size() - 1];
    }
    ScheduledProject& addDue(const std::string& path, ScheduleKind kind = ScheduleKind::AfterProject) {
        ScheduledProject& entry = addIdle(path, kind);
        entry.nextRun = at(0);
        return entry;
    }
    void addFollower(const std::string& path, std::int32_t afterIndex, std::int32_t minutes) {
        ScheduledProject& entry = addIdle(path);
        entry.afterIndex = afterIndex;
        entry.minutes = minutes;
    }
    ScheduledProject& addRunning(const std::string& path, std::int32_t runNumber) {
        ScheduledProject& entry = addIdle(path);
        entry.running = 1;
        entry.runNumber = runNumber;
        entry.runStart = at(-1000);
        return entry;
    }

    TickResult tickAt(std::int32_t seconds) {
        clock.set(at(seconds));
        log.clear();
        return engine.onTimer(at(seconds));
    }
    bool finishAt(std::int32_t seconds, std::uint32_t runNumber, RunOutcome outcome = {}) {
        clock.set(at(seconds));
        outcomes.left[runNumber] = std::move(outcome);
        log.clear();
        return engine.onRunFinished(runNumber);
    }

    test::EventLog log;
    test::FakeClock clock{at(0)};
    test::FakeRunLauncher launcher{log};
    test::FakeOutcomeSource outcomes{log};
    LoggingStore store{log};
    testing::StrictMock<test::MockUserMessages> messages;
    test::FakeEngineListener listener{log};
    test::FakeRunListener runs;
    ScheduleList entries;
    test::RedrawLog redraws{entries, log};
    RunPolicy policy;
    SchedulerEngine engine{entries, policy, {clock, launcher, outcomes, store, messages, listener, runs}};
};

} // namespace scheduler
