// A dialog and the window that owns it: which of them is enabled, where the dialog opens, where the focus
// goes.
#include "tests/scheduler/ui/framework/steppeddialog.h"

#include <gtest/gtest.h>

namespace {

using test::OwnerWindow;
using test::SteppedDialog;

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

} // namespace
