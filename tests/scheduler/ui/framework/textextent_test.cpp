#include "scheduler/ui/framework/dialog.h"
#include "scheduler/ui/framework/textextent.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class TextExtent : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dialog.open(nullptr)); }

    HWND label() const { return GetDlgItem(dialog.handle(), IDC_PLAIN_LABEL); }

    SIZE sizeOfLabel() const {
        RECT place{};
        GetWindowRect(label(), &place);
        return {place.right - place.left, place.bottom - place.top};
    }

    framework::Dialog dialog{IDD_CONTROLS};
};

TEST_F(TextExtent, GrowsWithTheTextButNotWithTheMarkOfAnAccessKey) {
    const framework::TextExtent extent(label());
    EXPECT_EQ(extent.of("").cx, 0);
    EXPECT_GT(extent.of("mm").cx, extent.of("m").cx);
    EXPECT_EQ(extent.of("&at").cx, extent.of("at").cx);
}

TEST_F(TextExtent, ATextThatFitsKeepsItsPlace) {
    const SIZE before = sizeOfLabel();
    framework::widenCutTexts(dialog.handle());
    EXPECT_EQ(sizeOfLabel().cx, before.cx);
}

TEST_F(TextExtent, ATextThatIsCutGetsTheWidthThatItNeeds) {
    const SIZE before = sizeOfLabel();
    const std::string text = "minutes after the hour, and some more";
    SetWindowTextA(label(), text.c_str());
    framework::widenCutTexts(dialog.handle());
    EXPECT_EQ(sizeOfLabel().cx, framework::TextExtent(label()).of(text).cx);
    EXPECT_GT(sizeOfLabel().cx, before.cx);
    EXPECT_EQ(sizeOfLabel().cy, before.cy);
}

TEST_F(TextExtent, BoxesWithTextGetTheWidthThatTheyNeed) {
    for (const int id : {IDC_CHECK, IDC_FIRST_CHOICE}) {
        const HWND box = GetDlgItem(dialog.handle(), id);
        const auto width = [&] {
            RECT place{};
            GetWindowRect(box, &place);
            return place.right - place.left;
        };
        const LONG before = width();
        framework::widenCutTexts(dialog.handle());
        EXPECT_EQ(width(), before) << id;
        const std::string text = "a text that is far too long for its place";
        SetWindowTextA(box, text.c_str());
        framework::widenCutTexts(dialog.handle());
        EXPECT_GE(width(), framework::TextExtent(box).of(text).cx + GetSystemMetrics(SM_CXMENUCHECK)) << id;
    }
}

TEST_F(TextExtent, ATextWithRoomForSeveralLinesIsLeft) {
    const SIZE before = sizeOfLabel();
    SetWindowPos(label(), nullptr, 0, 0, before.cx, 3 * before.cy, SWP_NOMOVE | SWP_NOZORDER);
    SetWindowTextA(label(), "minutes after the hour, and some more");
    framework::widenCutTexts(dialog.handle());
    EXPECT_EQ(sizeOfLabel().cx, before.cx);
}

} // namespace
