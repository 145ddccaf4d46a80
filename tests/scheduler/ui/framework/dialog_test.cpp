#include "tests/scheduler/ui/framework/steppeddialog.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

namespace {

using test::SteppedDialog;

TEST(Dialog, OkStoresTheControlsAndGivesOne) {
    SteppedDialog dialog;
    dialog.steps = {[&] {
        SetWindowTextA(dialog.edit.handle(), "after");
        dialog.press(IDOK);
    }};
    EXPECT_EQ(dialog.runModal(nullptr), 1);
    EXPECT_EQ(dialog.text, "after");
    EXPECT_EQ(dialog.handle(), nullptr);
}

TEST(Dialog, CancelStoresNothingAndGivesTwo) {
    SteppedDialog dialog;
    dialog.edit.passes = false;
    dialog.steps = {[&] {
        SetWindowTextA(dialog.edit.handle(), "after");
        dialog.press(IDCANCEL);
    }};
    EXPECT_EQ(dialog.runModal(nullptr), 2);
    EXPECT_EQ(dialog.text, "before");
    EXPECT_EQ(dialog.edit.checks, 0);
}

TEST(Dialog, ClosingItWithItsCaptionButtonGivesTwo) {
    SteppedDialog dialog;
    dialog.steps = {[&] {
        SetWindowTextA(dialog.edit.handle(), "after");
        SendMessageA(dialog.handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
    }};
    EXPECT_EQ(dialog.runModal(nullptr), 2);
    EXPECT_EQ(dialog.text, "before");
}

TEST(Dialog, ACloseThatIsSentAloneEndsItAtOnce) {
    SteppedDialog dialog;
    bool ticked = false; // the timer's message ends the loop where the other does not
    std::thread sender;  // a message from another thread arrives while the loop waits for a posted one
    dialog.steps = {[&] {
        dialog.stepping = false;
        SetFocus(GetDlgItem(dialog.handle(), IDCANCEL)); // an edit's blinking caret would wake the loop
        SetTimer(dialog.handle(), 1, test::patience, nullptr);
    }};
    dialog.onTick = [&] { ticked = true; };
    // Only now are the messages through that showed the dialog.
    dialog.onRest = [&] {
        if (dialog.stepping || sender.joinable())
            return;
        sender = std::thread([handle = dialog.handle()] { SendMessageA(handle, WM_CLOSE, 0, 0); });
    };
    EXPECT_EQ(dialog.runModal(nullptr), 2);
    EXPECT_FALSE(ticked);
    ASSERT_TRUE(sender.joinable());
    sender.join();
}

TEST(Dialog, ACloseIsNoCommand) {
    SteppedDialog dialog;
    dialog.steps = {[&] {
        EnableWindow(GetDlgItem(dialog.handle(), IDCANCEL), FALSE);
        SendMessageA(dialog.handle(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(dialog.isModalFinished()) << "without waiting for a button's message";
    }};
    EXPECT_EQ(dialog.runModal(nullptr), 2);
}

TEST(Dialog, EnterIsOkAndEscapeIsCancel) {
    for (const auto& [key, result] : {std::pair{VK_RETURN, 1}, std::pair{VK_ESCAPE, 2}}) {
        SteppedDialog dialog;
        dialog.steps = {[&, pressed = key] {
                            PostMessageA(dialog.edit.handle(), WM_KEYDOWN, static_cast<WPARAM>(pressed), 1);
                        },
                        [] {}};
        EXPECT_EQ(dialog.runModal(nullptr), result);
    }
}

TEST(Dialog, AFailingCheckKeepsItOpenAndStoresNothing) {
    SteppedDialog dialog;
    dialog.edit.passes = false;
    dialog.steps = {[&] {
                        SetWindowTextA(dialog.edit.handle(), "after");
                        dialog.press(IDOK);
                    },
                    [&] {
                        EXPECT_FALSE(dialog.isModalFinished());
                        EXPECT_EQ(dialog.edit.checks, 1);
                        EXPECT_EQ(dialog.second.checks, 0) << "the first that fails is the last";
                        EXPECT_EQ(dialog.text, "before");
                        dialog.edit.passes = true;
                        dialog.press(IDOK);
                    }};
    EXPECT_EQ(dialog.runModal(nullptr), 1);
    EXPECT_EQ(dialog.text, "after");
    EXPECT_EQ(dialog.second.checks, 1);
}

TEST(Dialog, HiddenAndDisabledControlsAreNotChecked) {
    SteppedDialog dialog;
    dialog.edit.passes = dialog.second.passes = false;
    dialog.steps = {[&] {
        dialog.edit.setVisible(false);
        dialog.second.setEnabled(false);
        dialog.press(IDOK);
    }};
    EXPECT_EQ(dialog.runModal(nullptr), 1);
    EXPECT_EQ(dialog.edit.checks + dialog.second.checks, 0);
}

TEST(Dialog, OneWhoseWindowDiesIsCancelled) {
    SteppedDialog dialog;
    dialog.steps = {[&] { DestroyWindow(dialog.handle()); }};
    EXPECT_EQ(dialog.runModal(nullptr), 2);
}

TEST(Dialog, OneThatTheProgramsEndInterruptsIsCancelledAndTheEndGoesOn) {
    SteppedDialog dialog;
    dialog.steps = {[&] {
        dialog.stepping = false;
        PostQuitMessage(5);
    }};
    EXPECT_EQ(dialog.runModal(nullptr), 2);
    MSG message{};
    ASSERT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
    while (message.message != WM_QUIT && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, 5U);
}

TEST(Dialog, CanBeRunAgain) {
    SteppedDialog dialog;
    dialog.steps = {[&] { dialog.press(IDOK); }};
    EXPECT_EQ(dialog.runModal(nullptr), 1);
    dialog.steps = {[&] { dialog.press(IDCANCEL); }};
    EXPECT_EQ(dialog.runModal(nullptr), 2);
}

TEST(Dialog, MouseMovesAreDispatchedPlainly) {
    SteppedDialog dialog;
    ASSERT_TRUE(dialog.open(nullptr));
    MSG message{};
    message.hwnd = dialog.edit.handle();
    message.message = WM_MOUSEMOVE;
    EXPECT_FALSE(dialog.preTranslate(message));
    message.message = WM_KEYDOWN;
    message.wParam = VK_TAB;
    EXPECT_TRUE(dialog.preTranslate(message));
}

TEST(Dialog, AfterAClickOnARadioButtonTheDependentFieldsChangeState) {
    SteppedDialog dialog;
    const auto dependent = [&] { return IsWindowEnabled(GetDlgItem(dialog.handle(), IDC_DATE)) != FALSE; };
    constexpr int patience = 40; // ticks
    int ticks = 0;
    dialog.onTick = [&] {
        if (++ticks == 1) {
            // All that was asked for so far has been done. A button tells of its click by a message that is
            // sent.
            EXPECT_FALSE(dependent());
            const HWND button = GetDlgItem(dialog.handle(), IDC_SECOND_CHOICE);
            PostMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
            PostMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        } else if (dependent() || ticks == patience) {
            dialog.press(IDCANCEL);
        }
    };
    dialog.steps = {[&] {
        dialog.stepping = false;
        SetTimer(dialog.handle(), 1, 50, nullptr);
    }};
    dialog.runModal(nullptr);
    EXPECT_LT(ticks, patience);
}

} // namespace
