#pragma once

#include "scheduler/ui/framework/hintwindow.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/schedulelistview.h"
#include "scheduler/ui/schedulerows.h"
#include "tests/support/fakeclock.h"

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace test {

inline std::vector<HWND> hintWindows() {
    std::vector<HWND> hints;
    for (HWND window = nullptr; (window = FindWindowExA(nullptr, window, nullptr, nullptr)) != nullptr;)
        if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() &&
            dynamic_cast<framework::HintWindow*>(framework::Window::of(window)))
            hints.push_back(window);
    return hints;
}

class ListWindow : public framework::Window {
public:
    ListWindow() {
        framework::WindowParameters parameters;
        parameters.style = WS_POPUP | WS_VISIBLE;
        parameters.x = 100;
        parameters.y = 80;
        parameters.width = 640;
        parameters.height = 320;
        create(class_, parameters);
        EXPECT_TRUE(list.createIn(handle()));
        list.moveTo({0, 0, parameters.width, parameters.height});
        for (int column = 0; column < static_cast<int>(scheduler::columnCount); ++column)
            ListView_SetColumnWidth(list.handle(), column, 100);
    }

    void add(const std::string& name, const std::string& lastResult = "") {
        scheduler::ScheduledProject entry;
        entry.path = "C:\\Sites\\" + name + ".kra";
        entry.lastResult = lastResult;
        schedule.append(entry);
    }

    void clickHeader(scheduler::ScheduleColumn column) const {
        NMLISTVIEW click{};
        click.hdr = {list.handle(), 0, LVN_COLUMNCLICK};
        click.iSubItem = static_cast<int>(column);
        SendMessageA(handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&click));
    }

    void select(int row) const { ListView_SetItemState(list.handle(), row, LVIS_SELECTED, LVIS_SELECTED); }

    FakeClock clock{base::TimeValue(1'000'000)};
    scheduler::ScheduleList schedule;
    int stateQueries = 0; ///< queries of the engine's state by `rows`
    scheduler::ScheduleRows rows{schedule,
                                 [this] {
                                     ++stateQueries;
                                     return scheduler::EngineState{false, false};
                                 },
                                 clock};
    scheduler::ScheduleListView list{schedule, rows};

private:
    framework::WindowClass class_;
};

} // namespace test
