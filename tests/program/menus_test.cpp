// The menus of the real program and its icon.

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "tests/program/commandsfixture.h"
#include "tests/program/witnessdriver.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using driver::Commands;
using driver::SeenItem;
using driver::sleeping;
using driver::waitUntil;
using scheduler::ScheduledProject;
using testing::ElementsAre;

namespace {

TEST_F(Commands, MenusForNoneOneAndSeveralSelected) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra"), sleeping("run:c")};
    entries[1].disabled = 1;
    startWith(entries);
    expectProjectMenus(false, false, "Enable", false);
    list().select({0});
    expectProjectMenus(true, true, "Disable", true);
    list().select({1});
    expectProjectMenus(true, true, "Enable", true);
    list().select({2});
    expectProjectMenus(true, true, "Disable", false);
    list().select({0, 1});
    expectProjectMenus(false, true, "Enable/disable", true);
    list().select({0, 2});
    expectProjectMenus(false, true, "Disable", true);
}

TEST_F(Commands, FileAndHelpMenusAndTheIconsMenu) {
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

TEST_F(Commands, TheWindowsOwnMenuIsLeftToThePlatform) {
    startWith({});
    const std::vector<SeenItem> items =
        witness().menuOpenedBy([&] { PostMessageA(window(), WM_SYSCOMMAND, SC_KEYMENU, ' '); });
    bool closeIsDefault = false;
    for (const SeenItem& item : items)
        closeIsDefault |= item.command == SC_CLOSE && item.isDefault;
    EXPECT_TRUE(closeIsDefault);
}

TEST_F(Commands, TheIconsMenuLeavesAHiddenWindowHidden) {
    startWith({}, "/s");
    EXPECT_EQ(trayMenu().size(), 3U);
    EXPECT_FALSE(IsWindowVisible(window()));
}

TEST_F(Commands, TheIconsMenuOfAHiddenWindowKeepsNoKeys) {
    startWith({sleeping("a.kra")}, "/s");
    const HWND other = CreateWindowExA(0, "STATIC", "another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       100, 100, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    ASSERT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    AllowSetForegroundWindow(ASFW_ANY);
    EXPECT_EQ(trayMenu().size(), 3U);
    EXPECT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    DestroyWindow(other);
}

TEST_F(Commands, AKeyThatReachesAHiddenWindowDoesNothing) {
    startWith({sleeping("a.kra"), sleeping("b.kra")});
    list().select({0});
    carryOut(IDM_CLOSE);
    const LONG before = witness().commands();
    list().pressKey(VK_DELETE);
    ASSERT_TRUE(waitUntil([&] { return witness().commands() > before; }));
    SendMessageA(window(), WM_NULL, 0, 0);
    EXPECT_EQ(list().rowCount(), 2);
    carryOut(IDM_DELETE);
    EXPECT_EQ(list().rowCount(), 1) << "but a command of the menu's kind does";
}

TEST_F(Commands, TheIconsMenuCarriesOutWhatIsChosen) {
    startWith({}, "/s");
    PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN);
    ASSERT_TRUE(waitUntil([&] { return witness().isMenuOpen(); }));
    PostMessageA(window(), WM_KEYDOWN, VK_DOWN, 1);
    PostMessageA(window(), WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window()) != FALSE; }));
}

TEST_F(Commands, OtherNoticesOfTheIconDoNothing) {
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

TEST_F(Commands, AContextMenuElsewhereDoesNotOpen) {
    startWith({sleeping("a.kra")});
    const LONG menus = witness().menus();
    SendMessageA(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window()), MAKELPARAM(50, 50));
    EXPECT_EQ(witness().menus(), menus);
}

TEST_F(Commands, ANewTaskbarGetsTheIconAgain) {
    startWith({});
    const UINT made = RegisterWindowMessageA("TaskbarCreated");
    // Without its icon the program works on; with it, the shell answers as before.
    SendMessageA(window(), made, 0, 0);
    SendMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDBLCLK);
    EXPECT_TRUE(IsWindowVisible(window()));
    NOTIFYICONDATAA icon{};
    icon.cbSize = NOTIFYICONDATAA_V1_SIZE;
    icon.hWnd = window();
    ASSERT_TRUE(Shell_NotifyIconA(NIM_DELETE, &icon)) << "it was there";
    ASSERT_FALSE(Shell_NotifyIconA(NIM_DELETE, &icon)) << "once";
    SendMessageA(window(), made, 0, 0);
    EXPECT_TRUE(Shell_NotifyIconA(NIM_DELETE, &icon)) << "and is there again";
}

} // namespace
