#include "scheduler/ui/framework/checkbox.h"
#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/edit.h"
#include "scheduler/ui/framework/radiogroup.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/scheduler/ui/framework/testdialogs.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>

namespace {

class OwnerWindow : public framework::Window {
public:
    OwnerWindow() {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
        parameters.x = 100;
        parameters.y = 50;
        parameters.width = 900;
        parameters.height = 500;
        create(windowClass, parameters);
    }
};

class CheckedEdit : public framework::Edit {
public:
    using Edit::Edit;
    bool check() override {
        ++checks;
        return passes;
    }
    bool passes = true;
    int checks = 0;
};

/// Runs its steps one after the other, each on a message that is posted behind the one before.
class SteppedDialog : public framework::Dialog {
public:
    explicit SteppedDialog(int templateId = IDD_CONTROLS) : Dialog(templateId) {}

    std::string text = "before";
    CheckedEdit edit{*this, IDC_TEXT, framework::bindText(text)};
    CheckedEdit second{*this, IDC_SECOND_TEXT};
    framework::RadioGroup choice{*this, {IDC_FIRST_CHOICE, IDC_SECOND_CHOICE, IDC_THIRD_CHOICE}};
    std::vector<std::function<void()>> steps;
    std::function<void()> onTick;
    std::function<void()> onRest; ///< the queue has run empty
    bool stepping = true;         ///< false: no step follows, and the queue runs empty

    void press(int id) { SendMessageA(GetDlgItem(handle(), id), BM_CLICK, 0, 0); }

    void load() override {
        Dialog::load();
        PostMessageA(handle(), step, 0, 0);
    }
    void onIdle() override {
        Dialog::onIdle();
        if (onRest)
            onRest();
    }

protected:
    framework::Handled onMessage(const framework::Message& message) override {
        if (message.id == WM_TIMER && onTick)
            onTick();
        if (message.id != step)
            return Dialog::onMessage(message);
        if (message.wParam < steps.size()) {
            steps[message.wParam]();
            if (handle() && stepping)
                PostMessageA(handle(), step, message.wParam + 1, 0);
        } else if (!isModalFinished()) {
            ADD_FAILURE() << "the dialog did not end";
            finish(0);
        }
        return 0;
    }

    void updateState() override {
        if (choice.handle())
            enableItem(IDC_DATE, choice.value() == 1);
    }

private:
    static constexpr UINT step = WM_APP + 1;
};

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

TEST(Dialog, ItsOwnerIsDisabledWhileItRuns) {
    OwnerWindow owner;
    SteppedDialog dialog;
    dialog.steps = {[&] {
        EXPECT_FALSE(IsWindowEnabled(owner.handle()));
        EXPECT_TRUE(IsWindowVisible(dialog.handle()));
        EXPECT_EQ(GetWindow(dialog.handle(), GW_OWNER), owner.handle());
        dialog.press(IDOK);
    }};
    dialog.runModal(owner.handle());
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
}

TEST(Dialog, AnOwnerThatIsDisabledAlreadyStaysSo) {
    OwnerWindow owner;
    EnableWindow(owner.handle(), FALSE);
    SteppedDialog dialog;
    dialog.steps = {[&] { dialog.press(IDOK); }};
    dialog.runModal(owner.handle());
    EXPECT_FALSE(IsWindowEnabled(owner.handle()));
}

TEST(Dialog, TheFocusComesBack) {
    OwnerWindow owner;
    const HWND field = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, owner.handle(),
                                       nullptr, nullptr, nullptr);
    SetFocus(field);
    ASSERT_EQ(GetFocus(), field);
    SteppedDialog dialog;
    dialog.steps = {[&] {
        EXPECT_EQ(GetFocus(), dialog.edit.handle()) << "its first field has it";
        dialog.press(IDCANCEL);
    }};
    dialog.runModal(owner.handle());
    EXPECT_EQ(GetFocus(), field);
}

TEST(Dialog, OneThatCannotBeMadeSaysSo) {
    OwnerWindow owner;
    SteppedDialog dialog(4711);
    EXPECT_EQ(dialog.runModal(owner.handle()), framework::notMade);
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
}

POINT centreOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

TEST(Dialog, IsCentredOverItsOwner) {
    OwnerWindow owner;
    SteppedDialog dialog;
    dialog.steps = {[&] {
        EXPECT_NEAR(centreOf(dialog.handle()).x, centreOf(owner.handle()).x, 1);
        EXPECT_NEAR(centreOf(dialog.handle()).y, centreOf(owner.handle()).y, 1);
        dialog.press(IDCANCEL);
    }};
    dialog.runModal(owner.handle());
}

TEST(Dialog, IsLeftWhereThePlatformCentredIt) {
    OwnerWindow owner;
    SteppedDialog dialog(IDD_CENTRED);
    RECT screen{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &screen, 0);
    // The owner is far from the middle, over which the platform centres what asks it to.
    SetWindowPos(owner.handle(), nullptr, 0, 0, 200, 200, SWP_NOZORDER);
    dialog.steps = {[&] {
        EXPECT_NE(centreOf(dialog.handle()).x, centreOf(owner.handle()).x);
        dialog.press(IDCANCEL);
    }};
    dialog.runModal(owner.handle());
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
