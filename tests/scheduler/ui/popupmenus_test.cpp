#include "resources/ids.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/notificationicon.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/eventlog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using test::Override;
using testing::ElementsAre;
using testing::IsEmpty;

class PopupMenus : public testing::Test {
protected:
    PopupMenus() {
        window_.create(class_, {});
        other_.create(class_, {});
        foreground_ = other_.handle();
    }

    void show() const { ShowWindow(window_.handle(), SW_SHOWNOACTIVATE); }
    void click(UINT message) { scheduler::NotificationIcon::onMouse(message, presence_); }

    test::EventLog events_;
    HWND foreground_ = nullptr;
    std::function<void()> whileOpen_ = [] {}; ///< runs while the menu is open

    scheduler::Preferences preferences_;
    framework::WindowClass class_;
    framework::Window window_;
    framework::Window other_;
    scheduler::WindowPresence presence_{window_, preferences_};

private:
    Override<test::SetForegroundWindowCall> setting_{[this](HWND window) {
        events_.emplace_back(window == window_.handle() ? "main window forward" : "other window forward");
        foreground_ = window;
        return TRUE;
    }};
    Override<test::GetForegroundWindowCall> asking_{[this] { return foreground_; }};
    Override<test::GetCursorPosCall> pointer_{[](POINT* place) {
        *place = {321, 123};
        return TRUE;
    }};
    Override<test::TrackPopupMenuCall> menu_{
        [this](HMENU menu, UINT flags, int x, int y, int, HWND owner, const RECT*) {
            events_.emplace_back("menu");
            EXPECT_EQ(flags, UINT{TPM_RIGHTBUTTON});
            EXPECT_EQ(x, 321);
            EXPECT_EQ(y, 123);
            EXPECT_EQ(owner, window_.handle());
            EXPECT_EQ(GetMenuItemID(menu, 0), UINT{IDM_DISPLAY});
            whileOpen_();
            return TRUE;
        }};
};

TEST_F(PopupMenus, AHiddenWindowHasTheForegroundOnlyWhileTheMenuIsOpen) {
    click(WM_RBUTTONDOWN);
    EXPECT_THAT(events_, ElementsAre("main window forward", "menu", "other window forward"));
    EXPECT_FALSE(IsWindowVisible(window_.handle()));
}

TEST_F(PopupMenus, TheForegroundIsNotRestoredIfItChangedWhileTheMenuWasOpen) {
    const std::function<void()> meanwhile[] = {
        [&] { foreground_ = GetDesktopWindow(); },
        [&] { show(); },
        [&] { DestroyWindow(other_.handle()); },
    };
    for (const auto& act : meanwhile) {
        ShowWindow(window_.handle(), SW_HIDE);
        foreground_ = other_.handle();
        events_.clear();
        whileOpen_ = act;
        click(WM_RBUTTONDOWN);
        EXPECT_THAT(events_, ElementsAre("main window forward", "menu")) << &act - meanwhile;
    }
}

TEST_F(PopupMenus, AHiddenWindowReturnsTheForegroundIfTheMenuCannotBeLoaded) {
    const Override<test::LoadMenuACall> refused([](HINSTANCE, LPCSTR) { return nullptr; });
    click(WM_RBUTTONDOWN);
    EXPECT_THAT(events_, ElementsAre("main window forward", "other window forward"));
}

TEST_F(PopupMenus, AClickBringsOnlyAVisibleWindowForward) {
    click(WM_LBUTTONDOWN);
    EXPECT_THAT(events_, IsEmpty());
    show();
    click(WM_LBUTTONDOWN);
    EXPECT_THAT(events_, ElementsAre("main window forward"));
    click(WM_RBUTTONDOWN);
    EXPECT_THAT(events_, ElementsAre("main window forward", "main window forward", "menu"));
}

TEST_F(PopupMenus, OtherNotificationsOfTheIconAreIgnored) {
    show();
    for (const UINT message : {UINT{0}, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONUP}, UINT{WM_RBUTTONUP},
                               UINT{WM_RBUTTONDBLCLK}, UINT{WM_CONTEXTMENU}, UINT{0xFFFF}})
        click(message);
    EXPECT_THAT(events_, IsEmpty());
}

TEST_F(PopupMenus, AClickBringsTheOpenDialogForward) {
    show();
    framework::WindowParameters parameters;
    parameters.style = WS_POPUP | WS_VISIBLE;
    parameters.parent = window_.handle();
    framework::Window dialog;
    dialog.create(class_, parameters);
    SetActiveWindow(dialog.handle());
    ASSERT_EQ(GetLastActivePopup(window_.handle()), dialog.handle());
    EnableWindow(window_.handle(), FALSE);
    for (const UINT message : {UINT{WM_LBUTTONDOWN}, UINT{WM_LBUTTONDBLCLK}, UINT{WM_RBUTTONDOWN}}) {
        foreground_ = nullptr;
        click(message);
        EXPECT_EQ(foreground_, dialog.handle()) << message;
    }
    EnableWindow(window_.handle(), TRUE);
}

} // namespace
