#pragma once

#include "scheduler/ui/framework/dialog.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace test {

/// A dialog with all kinds of controls.
class ControlDialogTest : public testing::Test {
protected:
    void SetUp() override { open(); }
    /// Reopens the dialog, so that it attaches and loads new controls.
    void open() {
        DestroyWindow(dialog.handle());
        ASSERT_TRUE(dialog.open(nullptr));
    }
    HWND item(int id) const { return GetDlgItem(dialog.handle(), id); }

    framework::Dialog dialog{IDD_CONTROLS};
};

} // namespace test
