#pragma once

#include "lib/base/base.h"
#include "lib/base/registry.h"
#include "resources/ids.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/ui/mainwindow.h"
#include "tests/scheduler/ui/platformcalls.h"

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace test {

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() {
        base::applicationName = "Corvane Scheduler";
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
        save({});
        startThread = [this] { return threadsStart; };
    }
    ~MainWindowTest() override {
        startThread = nullptr;
        currentTime = nullptr;
    }

    /// An entry that is due at once after a log-on.
    static scheduler::ScheduledProject entry(const std::string& path) {
        scheduler::ScheduledProject entry;
        entry.path = path;
        entry.kind = scheduler::ScheduleKind::AtStartup;
        return entry;
    }

    static void save(std::vector<scheduler::ScheduledProject> entries) {
        scheduler::ScheduleList schedule;
        schedule.assign(std::move(entries));
        EXPECT_TRUE(scheduler::saveSchedule(schedule));
    }
    static std::vector<scheduler::ScheduledProject> saved() {
        scheduler::ScheduleList schedule;
        EXPECT_TRUE(scheduler::loadSchedule(schedule, scheduler::scheduleMagic));
        std::vector<scheduler::ScheduledProject> entries;
        std::ranges::copy(schedule, std::back_inserter(entries));
        return entries;
    }

    void start(const std::string& commandLine = "/s", int showCommand = SW_SHOWNORMAL) {
        mainWindow.reset();
        mainWindow = std::make_unique<scheduler::MainWindow>();
        ASSERT_TRUE(mainWindow->start(commandLine, showCommand));
    }

    HWND handle() const { return mainWindow->handle(); }
    HWND list() const { return GetDlgItem(handle(), IDC_SCHEDULE_LIST); }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessageA(handle(), message, wParam, lParam);
    }
    void command(int id) const { send(WM_COMMAND, static_cast<WPARAM>(id)); }
    void tick(WPARAM timer = 1) const { send(WM_TIMER, timer); }
    void select(int row) const { ListView_SetItemState(list(), row, LVIS_SELECTED, LVIS_SELECTED); }

    std::string cell(int row, scheduler::ScheduleColumn column) const {
        std::array<char, 260> text{};
        LVITEMA item{};
        item.iSubItem = static_cast<int>(column);
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        SendMessageA(list(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text.data();
    }
    std::string nextRun(int row) const { return cell(row, scheduler::ScheduleColumn::NextRun); }

    bool threadsStart = true;
    MessageBoxes boxes;
    std::unique_ptr<scheduler::MainWindow> mainWindow;
};

} // namespace test
