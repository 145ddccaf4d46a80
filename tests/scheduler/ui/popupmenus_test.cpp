#include "resources/ids.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/notificationicon.h"
#include "scheduler/ui/popupmenus.h"
#include "tests/support/eventlog.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr POINT pointer{321, 123};

test::EventLog events;
HWND foreground = nullptr;
HWND mainWindow = nullptr;
std::function<void()> whileOpen; ///< what happens while the menu is open

BOOL WINAPI simulatedSetForeground(HWND window) {
    events.emplace_back(window == mainWindow ? "main window forward" : "other window forward");
    foreground = window;
    return TRUE;
}

HWND WINAPI simulatedForeground() {
    return foreground;
}

BOOL WINAPI fixedPointer(POINT* place) {
    *place = pointer;
    return TRUE;
}

BOOL WINAPI simulatedTrack(HMENU menu, UINT flags, int x, int y, int, HWND owner, const RECT*) {
    events.emplace_back("menu");
    EXPECT_EQ(flags, UINT{TPM_RIGHTBUTTON});
    EXPECT_EQ(x, pointer.x);
    EXPECT_EQ(y, pointer.y);
    EXPECT_EQ(owner, mainWindow);
    EXPECT_EQ(GetMenuItemID(menu, 0), UINT{IDM_DISPLAY});
    if (whileOpen)
        whileOpen();
    return TRUE;
}

bool menuIsRefused = false;

HMENU WINAPI menuUnlessRefused(HINSTANCE instance, LPCSTR name) {
    static const auto original = test::platformFunction<decltype(&LoadMenuA)>("user32.dll", "LoadMenuA");
    return menuIsRefused ? nullptr : original(instance, name);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(LoadMenuA, "_LoadMenuA@8", menuUnlessRefused);
SCHEDULER_REPLACE_IMPORT(SetForegroundWindow, "_SetForegroundWindow@4", simulatedSetForeground);
SCHEDULER_REPLACE_IMPORT(GetForegroundWindow, "_GetForegroundWindow@0", simulatedForeground);
SCHEDULER_REPLACE_IMPORT(GetCursorPos, "_GetCursorPos@4", fixedPointer);
SCHEDULER_REPLACE_IMPORT(TrackPopupMenu, "_TrackPopupMenu@28", simulatedTrack);

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PopupMenus : public testing::Test {
protected:
    PopupMenus() {
        window_.create(class_, {});
        other_.create(class_, {});
        mainWindow = window_.handle();
        foreground = other_.handle();
        whileOpen = nullptr;
        menuIsRefused = false;
        events.clear();
    }

    void show() const { ShowWindow(window_.handle(), SW_SHOWNOACTIVATE); }
    void clickRight() { scheduler::NotificationIcon::onMouse(WM_RBUTTONDOWN, presence_); }

    scheduler::Preferences preferences_;
    framework::WindowClass class_;
    framework::Window window_;
    framework::Window other_;
    scheduler::WindowPresence presence_{window_, preferences_};
};

TEST_F(PopupMenus, TheIconsMenuOpensAtThePointerOverTheShownWindow) {
    show();
    clickRight();
    EXPECT_THAT(events, ElementsAre("main window forward", "menu"));
}

TEST_F(PopupMenus, AHiddenWindowHasTheForegroundOnlyWhileTheMenuIsOpen) {
    clickRight();
    EXPECT_THAT(events, ElementsAre("main window forward", "menu", "other window forward"));
    EXPECT_FALSE(IsWindowVisible(mainWindow));
}

TEST_F(PopupMenus, WhatTheUserClicksInsteadOfTheMenuStaysInFront) {
    whileOpen = [] { foreground = GetDesktopWindow(); };
    clickRight();
    EXPECT_THAT(events, ElementsAre("main window forward", "menu"));
}

TEST_F(PopupMenus, AWindowThatIsGoneMeanwhileDoesNotComeBack) {
    whileOpen = [&] { DestroyWindow(other_.handle()); };
    clickRight();
    EXPECT_THAT(events, ElementsAre("main window forward", "menu"));
}

TEST_F(PopupMenus, AWindowThatIsShownMeanwhileStaysInFront) {
    whileOpen = [&] { show(); };
    clickRight();
    EXPECT_THAT(events, ElementsAre("main window forward", "menu"));
}

TEST_F(PopupMenus, AClickBringsForwardTheDialogThatIsOpenOverTheWindow) {
    show();
    framework::WindowParameters parameters;
    parameters.style = WS_POPUP | WS_VISIBLE;
    parameters.parent = mainWindow;
    framework::Window dialog;
    dialog.create(class_, parameters);
    SetActiveWindow(dialog.handle());
    ASSERT_EQ(GetLastActivePopup(mainWindow), dialog.handle());
    EnableWindow(mainWindow, FALSE);
    for (const UINT click : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}, UINT{WM_RBUTTONDOWN}}) {
        foreground = nullptr;
        scheduler::NotificationIcon::onMouse(click, presence_);
        EXPECT_EQ(foreground, dialog.handle()) << click;
    }
    EnableWindow(mainWindow, TRUE);
}

TEST_F(PopupMenus, WithoutItsMenuAHiddenWindowDoesNotKeepTheForeground) {
    menuIsRefused = true;
    clickRight();
    EXPECT_THAT(events, ElementsAre("main window forward", "other window forward"));
    show();
    events.clear();
    scheduler::trackMenu(mainWindow, IDR_TRAY_MENU);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(PopupMenus, AClickBringsForwardWhatIsShownOnly) {
    scheduler::NotificationIcon::onMouse(WM_LBUTTONDOWN, presence_);
    EXPECT_THAT(events, IsEmpty());
    show();
    scheduler::NotificationIcon::onMouse(WM_LBUTTONDOWN, presence_);
    EXPECT_THAT(events, ElementsAre("main window forward"));
}

} // namespace
