#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/framework/steppedwindows.h"

#include <gtest/gtest.h>

namespace {

/// Parameter: true for a property sheet, false for a dialog.
class ModalWindow : public testing::TestWithParam<bool> {
protected:
    void openOwner() { ASSERT_TRUE(owner.open(WS_OVERLAPPEDWINDOW | WS_VISIBLE, {100, 50, 1000, 550})); }
    HWND handle() const { return modal.window().handle(); }
    std::string logAfterLoading() const {
        const std::string loading = "load first; load second; ";
        EXPECT_TRUE(modal.log.starts_with(loading));
        return modal.log.substr(loading.size());
    }

    test::ProbeWindow owner;
    test::SteppedDialog dialog;
    test::SteppedSheet sheet;
    test::Stepped& modal = GetParam() ? static_cast<test::Stepped&>(sheet) : dialog;
    test::LoggingEdit& first = chosen(sheet.first.edit, dialog.first);
    test::LoggingEdit& second = chosen(sheet.second.edit, dialog.second);

private:
    static test::LoggingEdit& chosen(test::LoggingEdit& ofSheet, test::LoggingEdit& ofDialog) {
        return GetParam() ? ofSheet : ofDialog;
    }
};

INSTANTIATE_TEST_SUITE_P(DialogAndSheet, ModalWindow, testing::Bool());

TEST_P(ModalWindow, OkAndEnterCheckAndStoreAllControlsAndReturnOne) {
    for (const bool byKey : {false, true}) {
        first.field = "before";
        modal.log.clear();
        modal.steps = {[&] {
                           SetWindowTextA(first.handle(), "after");
                           if (byKey)
                               PostMessageA(first.handle(), WM_KEYDOWN, VK_RETURN, 1);
                           else
                               modal.press(IDOK);
                       },
                       [] {}};
        EXPECT_EQ(modal.runSteps(), 1);
        EXPECT_EQ(logAfterLoading(), "check first; check second; store first; store second; ");
        EXPECT_EQ(first.field, "after");
        EXPECT_EQ(handle(), nullptr);
    }
}

TEST_P(ModalWindow, CancelEscapeCloseAndDestructionStoreNothingAndReturnTwo) {
    const std::function<void()> ends[] = {
        [&] { modal.press(IDCANCEL); },
        [&] { PostMessageA(first.handle(), WM_KEYDOWN, VK_ESCAPE, 1); },
        [&] { SendMessageA(handle(), WM_SYSCOMMAND, SC_CLOSE, 0); },
        [&] { DestroyWindow(handle()); },
    };
    for (const auto& end : ends) {
        modal.log.clear();
        modal.steps = {[&] {
                           SetWindowTextA(first.handle(), "after");
                           end();
                       },
                       [] {}};
        EXPECT_EQ(modal.runSteps(), 2);
        EXPECT_EQ(logAfterLoading(), "");
        EXPECT_EQ(first.field, "before");
    }
}

TEST_P(ModalWindow, AQuitMessageCancelsItAndStaysInTheQueue) {
    modal.steps = {[&] {
        modal.stepping = false;
        PostQuitMessage(5);
    }};
    EXPECT_EQ(modal.runSteps(), 2);
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
    }
    EXPECT_EQ(message.message, UINT{WM_QUIT});
    EXPECT_EQ(message.wParam, WPARAM{5});
}

TEST_P(ModalWindow, AFailingCheckKeepsItOpenAndStoresNothing) {
    first.passes = false;
    modal.steps = {[&] { modal.press(IDOK); },
                   [&] {
                       EXPECT_FALSE(modal.window().isModalFinished());
                       EXPECT_EQ(logAfterLoading(), "check first; ") << "stops at the first failure";
                       first.passes = true;
                       modal.press(IDOK);
                   }};
    EXPECT_EQ(modal.runSteps(), 1);
}

TEST_P(ModalWindow, DisablesItsOwnerAndRestoresTheFocus) {
    openOwner();
    const HWND field = test::createPlain("EDIT", WS_CHILD | WS_VISIBLE, {0, 0, 50, 20}, owner.handle());
    SetFocus(field);
    ASSERT_EQ(GetFocus(), field);
    modal.steps = {[&] {
        EXPECT_FALSE(IsWindowEnabled(owner.handle()));
        EXPECT_TRUE(IsWindowVisible(handle()));
        EXPECT_EQ(GetWindow(handle(), GW_OWNER), owner.handle());
        EXPECT_EQ(GetFocus(), first.handle());
        modal.press(IDCANCEL);
    }};
    modal.runSteps(owner.handle());
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
    EXPECT_EQ(GetFocus(), field);
}

TEST_P(ModalWindow, AnOwnerThatWasDisabledStaysDisabled) {
    openOwner();
    EnableWindow(owner.handle(), FALSE);
    modal.steps = {[&] { modal.press(IDOK); }};
    modal.runSteps(owner.handle());
    EXPECT_FALSE(IsWindowEnabled(owner.handle()));
}

TEST_P(ModalWindow, IsNotCreatedWhenAControlFailsToLoad) {
    openOwner();
    second.failsToLoad = true;
    EXPECT_EQ(modal.runSteps(owner.handle()), framework::notCreated);
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
    EXPECT_EQ(handle(), nullptr);
}

} // namespace
