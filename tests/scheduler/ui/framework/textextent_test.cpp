#include "scheduler/ui/framework/textextent.h"
#include "tests/scheduler/ui/framework/controldialog.h"

#include <gtest/gtest.h>

namespace {

using framework::sizeOf;

constexpr const char* longText = "minutes after the hour, and some more";

using TextExtent = test::ControlDialogTest;

TEST_F(TextExtent, GrowsWithTheTextAndIgnoresAccessKeyMarks) {
    const framework::TextExtent extent(dialog.handle());
    EXPECT_EQ(extent.of("").cx, 0);
    EXPECT_GT(extent.of("mm").cx, extent.of("m").cx);
    EXPECT_EQ(extent.of("&at").cx, extent.of("at").cx);
}

TEST_F(TextExtent, OnlyTruncatedTextsAreWidened) {
    for (const int id : {IDC_PLAIN_LABEL, IDC_CHECK, IDC_FIRST_CHOICE}) {
        const HWND text = item(id);
        const SIZE before = sizeOf(text);
        framework::widenTruncatedTexts(dialog.handle());
        EXPECT_EQ(sizeOf(text).cx, before.cx) << id;
        SetWindowTextA(text, longText);
        framework::widenTruncatedTexts(dialog.handle());
        const LONG needed = framework::TextExtent(text).of(longText).cx;
        if (id == IDC_PLAIN_LABEL)
            EXPECT_EQ(sizeOf(text).cx, needed);
        else
            EXPECT_GE(sizeOf(text).cx, needed + GetSystemMetrics(SM_CXMENUCHECK)) << id;
        EXPECT_EQ(sizeOf(text).cy, before.cy) << id;
    }
}

TEST_F(TextExtent, MultilineTextsKeepTheirWidth) {
    const HWND label = item(IDC_PLAIN_LABEL);
    const SIZE before = sizeOf(label);
    SetWindowPos(label, nullptr, 0, 0, before.cx, 3 * before.cy, SWP_NOMOVE | SWP_NOZORDER);
    SetWindowTextA(label, longText);
    framework::widenTruncatedTexts(dialog.handle());
    EXPECT_EQ(sizeOf(label).cx, before.cx);
}

} // namespace
