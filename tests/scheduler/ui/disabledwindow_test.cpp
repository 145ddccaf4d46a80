// What reaches the main window while another window is in front of it, and what it leaves to the platform.

#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "resources/ids.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/mainwindow.h"
#include "scheduler/ui/programtexts.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <gtest/gtest.h>

#include <array>
#include <shlobj.h>
#include <string>
#include <vector>

namespace {

HGLOBAL droppedFile(const std::string& path) {
    const HGLOBAL drop = GlobalAlloc(GHND, sizeof(DROPFILES) + path.size() + 2);
    auto* const header = static_cast<DROPFILES*>(GlobalLock(drop));
    header->pFiles = sizeof(DROPFILES);
    path.copy(reinterpret_cast<char*>(header + 1), path.size());
    GlobalUnlock(drop);
    return drop;
}

/// Saves these as the schedule that the next window loads.
void saveEntries(const std::vector<std::string>& paths) {
    scheduler::ScheduleList schedule;
    for (const std::string& path : paths) {
        scheduler::ScheduledProject entry;
        entry.path = path;
        schedule.append(entry);
    }
    ASSERT_TRUE(scheduler::saveSchedule(schedule));
}

scheduler::ScheduleList& load(scheduler::ScheduleList& schedule) {
    EXPECT_TRUE(scheduler::loadSchedule(schedule, scheduler::scheduleMagic));
    return schedule;
}

std::string cellText(HWND list, scheduler::ScheduleColumn column) {
    std::array<char, 100> text{};
    LVITEMA item{};
    item.iSubItem = static_cast<int>(column);
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageA(list, LVM_GETITEMTEXTA, 0, reinterpret_cast<LPARAM>(&item));
    return text.data();
}

/// Closes the menu that a message opens, and notes whether it was the window's own.
class MenuWatch : public framework::MessageFilter {
public:
    bool windowMenuOpened = false;

    framework::Handled filterMessage(framework::Window& window, const framework::Message& message) override {
        if (message.id == WM_INITMENUPOPUP)
            windowMenuOpened =
                reinterpret_cast<HMENU>(message.wParam) == GetSystemMenu(window.handle(), FALSE);
        if (message.id == WM_ENTERIDLE)
            EndMenu();
        return std::nullopt;
    }
};

class DisabledWindow : public testing::Test {
protected:
    DisabledWindow() {
        base::applicationName = "Corvane Scheduler";
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
    }
};

TEST_F(DisabledWindow, ARightClickOnTheTitleBarOpensTheWindowsOwnMenu) {
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("", SW_SHOWNORMAL));
    RECT place{};
    GetWindowRect(window.handle(), &place);
    MenuWatch watch;
    window.addFilter(watch);
    SendMessageA(window.handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window.handle()),
                 MAKELPARAM(place.left + 100, place.top + 8));
    window.removeFilter(watch);
    EXPECT_TRUE(watch.windowMenuOpened);
}

TEST_F(DisabledWindow, IgnoresWhatWouldChangeTheSchedule) {
    saveEntries({"C:\\Sites\\news.kra", "C:\\Sites\\shop.kra"});
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("", SW_SHOWNORMAL));
    const HWND list = GetDlgItem(window.handle(), IDC_SCHEDULE_LIST);
    ListView_SetItemState(list, 0, LVIS_SELECTED, LVIS_SELECTED);
    EnableWindow(window.handle(), FALSE); // as a modal window does with its owner
    for (const WPARAM command :
         {WPARAM{IDM_ADD}, WPARAM{IDM_EDIT}, WPARAM{IDM_DELETE}, WPARAM{IDM_RUN}, WPARAM{IDM_ENABLE}})
        SendMessageA(window.handle(), WM_COMMAND, command, 0);
    const HGLOBAL drop = droppedFile("C:\\Sites\\dropped.kra");
    SendMessageA(window.handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0);
    scheduler::ScheduleList schedule;
    EXPECT_EQ(load(schedule).size(), 2U);
    EXPECT_FALSE(schedule[0].disabled);
    EXPECT_EQ(ListView_GetItemCount(list), 2);
    EXPECT_NE(cellText(list, scheduler::ScheduleColumn::NextRun), "Running");

    EnableWindow(window.handle(), TRUE);
    SendMessageA(window.handle(), WM_COMMAND, IDM_ENABLE, 0);
    SendMessageA(window.handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(drop), 0);
    GlobalFree(drop);
    EXPECT_EQ(load(schedule).size(), 3U);
    EXPECT_TRUE(schedule[0].disabled);
}

TEST_F(DisabledWindow, CanStillBeSuspendedAndShown) {
    saveEntries({});
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOWNORMAL));
    EnableWindow(window.handle(), FALSE);
    SendMessageA(window.handle(), WM_COMMAND, IDM_SUSPEND, 0);
    EXPECT_EQ(base::windowText(window.handle()), scheduler::titleFor(true));
    SendMessageA(window.handle(), WM_COMMAND, IDM_DISPLAY, 0);
    EXPECT_TRUE(IsWindowVisible(window.handle()));
}

TEST_F(DisabledWindow, StillStartsWhatIsDueAndRecordsItsEnd) {
    scheduler::ScheduledProject due;
    due.path = "run:no such program";
    due.kind = scheduler::ScheduleKind::AtStartup;
    scheduler::ScheduleList schedule;
    schedule.append(due);
    ASSERT_TRUE(scheduler::saveSchedule(schedule));
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOWNORMAL));
    EnableWindow(window.handle(), FALSE);
    SendMessageA(window.handle(), WM_TIMER, 1, 0);
    const HWND list = GetDlgItem(window.handle(), IDC_SCHEDULE_LIST);
    EXPECT_EQ(cellText(list, scheduler::ScheduleColumn::NextRun), "Running");
    SendMessageA(window.handle(), scheduler::WM_RUN_FINISHED, 1, 0);
    EXPECT_NE(load(schedule)[0].lastRun, base::TimeValue());
}

TEST_F(DisabledWindow, StillExits) {
    saveEntries({});
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOWNORMAL));
    EnableWindow(window.handle(), FALSE);
    PostMessageA(window.handle(), WM_COMMAND, IDM_EXIT, 0);
    EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 0);
}

} // namespace
