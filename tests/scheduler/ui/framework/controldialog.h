// A dialog with one of each control.
#pragma once

#include "scheduler/ui/framework/dialog.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace test {

class ControlDialogTest : public testing::Test {
protected:
    void SetUp() override { open(); }
    /// Opens the dialog again, for controls and fields that are new.
    void open() {
        DestroyWindow(dialog.handle());
        ASSERT_TRUE(dialog.open(nullptr));
    }
    HWND item(int id) const { return GetDlgItem(dialog.handle(), id); }

    framework::Dialog dialog{IDD_CONTROLS};
};

} // namespace test
