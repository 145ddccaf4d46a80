#include "scheduler/ui/framework/windowclass.h"
#include "tests/scheduler/ui/framework/steppedsheet.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using test::SteppedSheet;

TEST(PropertySheet, OkChecksEachPageInTurnThenStoresAllAndGivesOne) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        SetWindowTextA(sheet.first.edit.handle(), "after");
        sheet.press(IDOK);
    }};
    EXPECT_EQ(sheet.runSteps(), 1);
    EXPECT_EQ(sheet.log, "check first; check second; store first; store second; ");
    EXPECT_EQ(sheet.first.text, "after");
    EXPECT_EQ(sheet.second.text, "before");
    EXPECT_EQ(sheet.handle(), nullptr);
}

TEST(PropertySheet, CancelStoresNothingAndGivesTwo) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        SetWindowTextA(sheet.first.edit.handle(), "after");
        sheet.press(IDCANCEL);
    }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.log, "");
    EXPECT_EQ(sheet.first.text, "before");
}

TEST(PropertySheet, ClosingItGivesTwo) {
    SteppedSheet sheet;
    sheet.steps = {[&] { SendMessageA(sheet.handle(), WM_SYSCOMMAND, SC_CLOSE, 0); }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.log, "");
}

TEST(PropertySheet, EnterIsOkAndEscapeIsCancel) {
    for (const auto& [key, result] : {std::pair{VK_RETURN, 1}, std::pair{VK_ESCAPE, 2}}) {
        SteppedSheet sheet;
        sheet.steps = {[&, pressed = key] {
                           PostMessageA(sheet.first.edit.handle(), WM_KEYDOWN, static_cast<WPARAM>(pressed),
                                        1);
                       },
                       [] {}};
        EXPECT_EQ(sheet.runSteps(), result);
    }
}

TEST(PropertySheet, AFailingPageKeepsItOpenAndNothingIsStored) {
    SteppedSheet sheet;
    sheet.first.passes = false;
    sheet.steps = {[&] { sheet.press(IDOK); },
                   [&] {
                       EXPECT_FALSE(sheet.isModalFinished());
                       EXPECT_EQ(sheet.log, "check first; ") << "the first that fails is the last";
                       sheet.first.passes = true;
                       sheet.press(IDOK);
                   }};
    EXPECT_EQ(sheet.runSteps(), 1);
}

TEST(PropertySheet, APageThatWasNeverShownIsCheckedTooAndTurnedTo) {
    SteppedSheet sheet;
    sheet.second.passes = false;
    sheet.steps = {[&] {
                       EXPECT_TRUE(sheet.isShown(sheet.first));
                       EXPECT_FALSE(sheet.isShown(sheet.second));
                       SetWindowTextA(sheet.first.edit.handle(), "after");
                       sheet.press(IDOK);
                   },
                   [&] {
                       EXPECT_EQ(sheet.log, "check first; check second; ");
                       EXPECT_TRUE(sheet.isShown(sheet.second));
                       EXPECT_FALSE(sheet.isShown(sheet.first));
                       EXPECT_TRUE(sheet.second.shownWhenFailing)
                           << "the user sees what the message is about";
                       sheet.press(IDCANCEL);
                   }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.first.text, "before") << "the page before the failing one was not stored either";
}

TEST(PropertySheet, PagesCanBeTurnedWithoutBeingChecked) {
    SteppedSheet sheet;
    sheet.first.passes = false;
    sheet.steps = {[&] {
        sheet.turnTo(1);
        EXPECT_TRUE(sheet.isShown(sheet.second));
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps();
    EXPECT_EQ(sheet.log, "");
}

TEST(PropertySheet, AnIdlePassReachesThePages) {
    SteppedSheet sheet;
    sheet.steps = {[&] {
        const int first = sheet.first.updates;
        const int second = sheet.second.updates;
        EXPECT_GE(second, 1) << "at the start";
        sheet.onIdle();
        EXPECT_EQ(sheet.first.updates, first + 1);
        EXPECT_EQ(sheet.second.updates, second + 1);
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps();
}

TEST(PropertySheet, TheOwnerIsDisabledWhileItRunsAndTheFocusComesBack) {
    framework::Window owner;
    framework::WindowClass windowClass;
    framework::WindowParameters parameters;
    parameters.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    ASSERT_TRUE(owner.create(windowClass, parameters));
    const HWND field = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, owner.handle(),
                                       nullptr, nullptr, nullptr);
    SetFocus(field);
    SteppedSheet sheet;
    sheet.steps = {[&] {
        EXPECT_FALSE(IsWindowEnabled(owner.handle()));
        EXPECT_EQ(GetWindow(sheet.handle(), GW_OWNER), owner.handle());
        sheet.press(IDCANCEL);
    }};
    sheet.runSteps(owner.handle());
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
    EXPECT_EQ(GetFocus(), field);
}

TEST(PropertySheet, OneWhoseWindowDiesIsCancelled) {
    SteppedSheet sheet;
    sheet.steps = {[&] { DestroyWindow(sheet.handle()); }};
    EXPECT_EQ(sheet.runSteps(), 2);
    EXPECT_EQ(sheet.log, "");
}

TEST(PropertySheet, CanBeRunAgain) {
    SteppedSheet sheet;
    sheet.steps = {[&] { sheet.press(IDOK); }};
    EXPECT_EQ(sheet.runSteps(), 1);
    EXPECT_EQ(sheet.runSteps(), 1);
}

} // namespace
