// The menus of the real program and its notification icon.

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "tests/program/commandsfixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

using driver::SeenItem;
using driver::sleeping;
using driver::waitUntil;
using scheduler::ScheduledProject;
using testing::ElementsAre;

namespace {

using Menus = driver::Commands;

TEST_F(Menus, TheEditAndItemMenusFollowTheSelection) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra"), sleeping("run:c")};
    entries[1].disabled = 1;
    startWith(entries);
    expectProjectMenus(false, false, "Enable", false);
    list().select({2});
    expectProjectMenus(true, true, "Disable", false);
    list().select({0, 1});
    expectProjectMenus(false, true, "Enable/disable", true);
}

TEST_F(Menus, SuspendIsResumeWhileSuspended) {
    startWith({sleeping("a.kra")});
    for (const std::string text : {"Suspend", "Resume"}) {
        EXPECT_THAT(barMenu('f'), ElementsAre(SeenItem{IDM_PREFERENCES, "&Preferences..."}, SeenItem{},
                                              SeenItem{IDM_SUSPEND, text}, SeenItem{IDM_CLOSE, "&Close"},
                                              SeenItem{IDM_EXIT, "E&xit"}));
        EXPECT_THAT(trayMenu(), ElementsAre(SeenItem{IDM_DISPLAY, "&Display", true, true},
                                            SeenItem{IDM_SUSPEND, text}, SeenItem{IDM_EXIT, "E&xit"}));
        carryOut(IDM_SUSPEND);
    }
    EXPECT_THAT(barMenu('h'), ElementsAre(SeenItem{IDM_ABOUT, "&About the Corvane Scheduler..."}));
}

TEST_F(Menus, TheWindowsOwnMenuIsThePlatforms) {
    startWith({});
    const std::vector<SeenItem> items =
        witness().menuOpenedBy([&] { PostMessageA(window(), WM_SYSCOMMAND, SC_KEYMENU, ' '); });
    EXPECT_TRUE(std::ranges::any_of(
        items, [](const SeenItem& item) { return item.command == SC_CLOSE && item.isDefault; }));
}

TEST_F(Menus, AContextMenuOpensOverTheListOnly) {
    startWith({sleeping("a.kra")});
    const LONG menus = witness().menus();
    SendMessageA(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window()), MAKELPARAM(50, 50));
    EXPECT_EQ(witness().menus(), menus);
}

TEST_F(Menus, TheIconsMenuLeavesAHiddenWindowHiddenAndReturnsTheForeground) {
    startWith({sleeping("a.kra")}, "/s");
    const HWND other = CreateWindowExA(0, "STATIC", "another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       100, 100, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    ASSERT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    AllowSetForegroundWindow(ASFW_ANY);
    EXPECT_EQ(trayMenu().size(), 3U);
    EXPECT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    EXPECT_FALSE(IsWindowVisible(window()));
    DestroyWindow(other);
}

TEST_F(Menus, TheIconsMenuCarriesOutWhatIsChosen) {
    startWith({}, "/s");
    PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN);
    ASSERT_TRUE(waitUntil([&] { return witness().isMenuOpen(); }));
    PostMessageA(window(), WM_KEYDOWN, VK_DOWN, 1);
    PostMessageA(window(), WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window()) != FALSE; }));
}

TEST_F(Menus, OnlyTheIconsClicksAreHandled) {
    startWith({}, "/s");
    const LONG menus = witness().menus();
    for (const UINT message :
         {UINT{0}, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONUP}, UINT{WM_RBUTTONUP}, UINT{WM_RBUTTONDBLCLK},
          UINT{WM_MBUTTONDOWN}, UINT{WM_CONTEXTMENU}, UINT{0xFFFF}})
        SendMessageA(window(), base::WM_TRAY_NOTIFY, 7, static_cast<LPARAM>(message));
    EXPECT_FALSE(IsWindowVisible(window()));
    EXPECT_EQ(witness().menus(), menus);
    SendMessageA(window(), base::WM_TRAY_NOTIFY, 7, WM_LBUTTONDBLCLK);
    EXPECT_TRUE(IsWindowVisible(window())) << "whatever the other parameter";
}

} // namespace
