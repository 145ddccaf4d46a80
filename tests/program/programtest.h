// What the tests of the real program begin and end with.
#pragma once

#include "lib/base/registry.h"
#include "scheduler/run/outcomes.h"
#include "tests/program/listdriver.h"
#include "tests/program/scheduledriver.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace driver {

// Where the program keeps what it knows, its automatic start apart, below the current user.
inline const std::string programKey = "Software\\Brindlewood\\scheduler";
inline const std::string stateKey = programKey + "\\State";
inline const std::string autostartValue =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\Corvane Scheduler";

/// An entry that never becomes due in a start by hand, so that its texts stay as they are.
inline scheduler::ScheduledProject sleeping(const std::string& path) {
    scheduler::ScheduledProject entry;
    entry.path = path;
    entry.kind = scheduler::ScheduleKind::AtStartup;
    return entry;
}

/// An entry that follows the one at a position of the schedule.
inline scheduler::ScheduledProject after(std::int32_t position, const std::string& path) {
    scheduler::ScheduledProject entry;
    entry.path = path;
    entry.kind = scheduler::ScheduleKind::AfterProject;
    entry.afterIndex = position;
    return entry;
}

/// An enabled entry that is due tomorrow: something to lose by leaving.
inline scheduler::ScheduledProject pendingEntry() {
    scheduler::ScheduledProject entry;
    entry.path = "C:\\Sites\\news.kra";
    entry.kind = scheduler::ScheduleKind::Once;
    entry.time = base::TimeValue::now() + base::TimeSpan::fromDays(1);
    return entry;
}

/// A program that was never here before, and is not afterwards.
class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override { forget(); }
    void TearDown() override {
        scheduler_.kill();
        forget();
    }

    void startWith(const std::vector<scheduler::ScheduledProject>& entries,
                   const std::string& switches = "") {
        scheduler_.kill();
        saveEntries(entries);
        ASSERT_TRUE(scheduler_.start(switches));
    }

    HWND window() const { return scheduler_.window(); }
    ListDriver list() const { return ListDriver(window()); }

    /// Carries a command out before it returns.
    void carryOut(int command) const { SendMessageA(window(), WM_COMMAND, static_cast<WPARAM>(command), 0); }

    /// The only entry as it is saved; an empty one while the file is being written.
    static scheduler::ScheduledProject savedEntry() {
        const auto entries = savedSchedule();
        return entries.size() == 1 ? entries.front() : scheduler::ScheduledProject();
    }

    /// Ends the program by a second call, and starts it again.
    void restart(const std::string& switches = "") {
        ASSERT_NO_FATAL_FAILURE(close());
        ASSERT_TRUE(scheduler_.start(switches));
    }
    void close() {
        ASSERT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
        ASSERT_TRUE(scheduler_.waitForExit());
    }

    /// The message box, or dialog, that comes; null when none does.
    HWND waitForBox() const {
        waitUntil([&] { return scheduler_.messageBox() != nullptr; });
        return scheduler_.messageBox();
    }

    SchedulerProcess scheduler_;

private:
    static void forget() {
        saveEntries({});
        DeleteFileA(safetyCopy("bak").c_str());
        DeleteFileA(safetyCopy("damaged").c_str());
        base::deleteKey(HKEY_CURRENT_USER, programKey);
        base::deleteKey(HKEY_LOCAL_MACHINE, scheduler::outcomesKey);
        base::deleteValue(HKEY_LOCAL_MACHINE, autostartValue);
    }
};

} // namespace driver
