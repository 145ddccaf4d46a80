#include "scheduler/ui/framework/clipboard.h"
#include "tests/support/clipboardtext.h"

#include <gtest/gtest.h>

namespace {

using framework::copyToClipboard;

TEST(Clipboard, ConvertsTextFromTheAnsiCodePage) {
    ASSERT_EQ(GetACP(), 1252U);
    EXPECT_TRUE(copyToClipboard(nullptr, "first"));
    EXPECT_TRUE(copyToClipboard(nullptr, "Z\xFCrich \x80 1"));
    EXPECT_EQ(test::clipboardText(), L"Z\u00FCrich \u20AC 1");
}

TEST(Clipboard, KeepsItsTextWhileAnotherWindowHasItOpen) {
    ASSERT_TRUE(copyToClipboard(nullptr, "before"));
    ASSERT_TRUE(OpenClipboard(GetDesktopWindow()));
    EXPECT_FALSE(copyToClipboard(nullptr, "after"));
    CloseClipboard();
    EXPECT_EQ(test::clipboardText(), L"before");
}

} // namespace
