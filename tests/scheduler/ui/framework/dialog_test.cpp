#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/framework/steppedwindows.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using test::placeOf;

class Dialog : public testing::Test {
protected:
    test::SteppedDialog dialog;
};

TEST_F(Dialog, ASentCloseEndsItWithoutAnyPostedMessage) {
    std::thread sender; // its message arrives while GetMessage waits for a posted one
    dialog.steps = {[&] {
        dialog.stepping = false;
        SetFocus(GetDlgItem(dialog.handle(), IDCANCEL)); // a blinking caret would wake the loop
    }};
    dialog.whenIdle = [&] {
        if (!dialog.stepping && !sender.joinable())
            sender = std::thread([handle = dialog.handle()] { SendMessageA(handle, WM_CLOSE, 0, 0); });
    };
    EXPECT_EQ(dialog.runSteps(), 2);
    ASSERT_TRUE(sender.joinable());
    sender.join();
}

TEST_F(Dialog, ACloseDoesNotNeedTheCancelButton) {
    dialog.steps = {[&] {
        EnableWindow(GetDlgItem(dialog.handle(), IDCANCEL), FALSE);
        SendMessageA(dialog.handle(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(dialog.isModalFinished()) << "ended without a message of the button";
    }};
    EXPECT_EQ(dialog.runSteps(), 2);
}

TEST_F(Dialog, DoesNotTranslateMouseMoves) {
    ASSERT_TRUE(dialog.open(nullptr));
    MSG message{dialog.first.handle(), WM_MOUSEMOVE, 0, 0, 0, {}};
    EXPECT_FALSE(dialog.preTranslate(message));
    message.message = WM_KEYDOWN;
    message.wParam = VK_TAB;
    EXPECT_TRUE(dialog.preTranslate(message));
}

TEST_F(Dialog, AClickOnARadioButtonUpdatesDependentFields) {
    const auto dependent = [&] { return IsWindowEnabled(GetDlgItem(dialog.handle(), IDC_DATE)) != FALSE; };
    bool clicked = false;
    dialog.steps = {[&] { dialog.stepping = false; }};
    dialog.whenIdle = [&] {
        if (dialog.stepping)
            return;
        EXPECT_TRUE(clicked || !dependent());
        const HWND button = GetDlgItem(dialog.handle(), IDC_SECOND_CHOICE);
        if (!std::exchange(clicked, true)) {
            PostMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
            PostMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        } else if (dependent()) {
            dialog.press(IDCANCEL);
        }
    };
    EXPECT_EQ(dialog.runSteps(), 2);
}

TEST_F(Dialog, IsCentredOverItsOwner) {
    test::ProbeWindow owner;
    ASSERT_TRUE(owner.open(WS_OVERLAPPEDWINDOW, {100, 50, 1000, 550}));
    dialog.steps = {[&] {
        EXPECT_EQ(placeOf(dialog.handle()).left, 550 - framework::sizeOf(dialog.handle()).cx / 2);
        EXPECT_EQ(placeOf(dialog.handle()).top, 300 - framework::sizeOf(dialog.handle()).cy / 2);
        dialog.press(IDCANCEL);
    }};
    dialog.runSteps(owner.handle());
}

TEST_F(Dialog, WithDsCenterStaysInTheMiddleOfTheScreen) {
    test::ProbeWindow owner;
    ASSERT_TRUE(owner.open(WS_OVERLAPPEDWINDOW, {0, 0, 200, 200}));
    RECT screen{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    test::SteppedDialog centred(IDD_CENTRED);
    centred.steps = {[&] {
        const RECT place = placeOf(centred.handle());
        EXPECT_NEAR((place.left + place.right) / 2, (screen.left + screen.right) / 2, 1);
        centred.press(IDCANCEL);
    }};
    centred.runSteps(owner.handle());
}

TEST_F(Dialog, IsNotCreatedWithoutATemplate) {
    EXPECT_EQ(test::SteppedDialog(4711).runSteps(), framework::notCreated);
}

} // namespace
