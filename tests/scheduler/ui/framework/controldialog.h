// A dialog with one of each control, to which a fixture adds the objects of those that it tests.
#pragma once

#include "scheduler/ui/framework/dialog.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace test {

class ControlDialogTest : public testing::Test {
protected:
    void SetUp() override { open(); }
    /// With a new window, for objects that were not there, or fields that were others, when it was opened.
    void open() {
        DestroyWindow(dialog.handle());
        ASSERT_TRUE(dialog.open(nullptr));
    }
    HWND item(int id) const { return GetDlgItem(dialog.handle(), id); }

    framework::Dialog dialog{IDD_CONTROLS};
};

} // namespace test
