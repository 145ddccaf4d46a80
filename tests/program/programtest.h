#pragma once

#include "lib/base/registry.h"
#include "scheduler/run/outcomes.h"
#include "tests/program/listdriver.h"
#include "tests/program/scheduledriver.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace driver {

// autostartValue is below HKEY_LOCAL_MACHINE, the other keys are below HKEY_CURRENT_USER.
inline const std::string programKey = "Software\\Brindlewood\\scheduler";
inline const std::string stateKey = programKey + "\\State";
inline const std::string autostartValue =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\Corvane Scheduler";

/// An entry that is never due after a manual start.
inline scheduler::ScheduledProject sleeping(const std::string& path) {
    scheduler::ScheduledProject entry;
    entry.path = path;
    entry.kind = scheduler::ScheduleKind::AtStartup;
    return entry;
}

inline scheduler::ScheduledProject after(std::int32_t position, const std::string& path) {
    scheduler::ScheduledProject entry;
    entry.path = path;
    entry.kind = scheduler::ScheduleKind::AfterProject;
    entry.afterIndex = position;
    return entry;
}

/// An entry that is due tomorrow, so that Exit asks.
inline scheduler::ScheduledProject pendingEntry() {
    scheduler::ScheduledProject entry;
    entry.path = "C:\\Sites\\news.kra";
    entry.kind = scheduler::ScheduleKind::Once;
    entry.time = base::TimeValue::now() + base::TimeSpan::fromDays(1);
    return entry;
}

/// Clears the program's registry data, schedule and safety copies before and after each test.
class ProgramTest : public ::testing::Test {
protected:
    void SetUp() override { resetState(); }
    void TearDown() override {
        scheduler_.kill();
        resetState();
    }

    void startWith(const std::vector<scheduler::ScheduledProject>& entries,
                   const std::string& switches = "") {
        scheduler_.kill();
        saveEntries(entries);
        ASSERT_TRUE(scheduler_.start(switches));
    }

    HWND window() const { return scheduler_.window(); }
    ListDriver list() const { return ListDriver(window()); }

    void carryOut(int command) const { SendMessageA(window(), WM_COMMAND, static_cast<WPARAM>(command), 0); }

    /// The only saved entry; a default one if the file does not hold exactly one.
    static scheduler::ScheduledProject savedEntry() {
        const auto entries = savedSchedule();
        return entries.size() == 1 ? entries.front() : scheduler::ScheduledProject();
    }

    void restart(const std::string& switches = "") {
        ASSERT_NO_FATAL_FAILURE(close());
        ASSERT_TRUE(scheduler_.start(switches));
    }
    void close() {
        ASSERT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
        ASSERT_TRUE(scheduler_.waitForExit());
    }

    HWND waitForBox() const {
        waitUntil([&] { return scheduler_.messageBox() != nullptr; });
        return scheduler_.messageBox();
    }

    SchedulerProcess scheduler_;

private:
    static void resetState() {
        saveEntries({});
        DeleteFileA(safetyCopy("bak").c_str());
        DeleteFileA(safetyCopy("damaged").c_str());
        base::deleteKey(HKEY_CURRENT_USER, programKey);
        base::deleteKey(HKEY_LOCAL_MACHINE, scheduler::outcomesKey);
        base::deleteValue(HKEY_LOCAL_MACHINE, autostartValue);
    }
};

} // namespace driver
