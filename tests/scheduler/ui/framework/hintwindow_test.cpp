#include "scheduler/ui/framework/hintwindow.h"
#include "tests/scheduler/ui/framework/hintfixture.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

namespace {

using framework::Hint;
using framework::HintStyle;
using framework::HintWindow;
using test::hintAt;
using test::HintOwner;
using test::hints;
using test::placeOf;

using HintWindowTest = test::HintWindowTest;

TEST_F(HintWindowTest, IsShownForATextAndAPointerInsideItsOwner) {
    HintOwner owner;
    EXPECT_FALSE(HintWindow::show(&owner, hintAt({400, 300}, "")));
    for (const POINT outside : {POINT{199, 300}, POINT{600, 300}, POINT{400, 149}, POINT{400, 450}}) {
        SetCursorPos(outside.x, outside.y);
        EXPECT_FALSE(HintWindow::show(&owner, hintAt({400, 300}))) << outside.x << ',' << outside.y;
    }
    EXPECT_TRUE(hints().empty());
    for (const POINT inside : {POINT{200, 150}, POINT{599, 449}, POINT{400, 300}}) {
        SetCursorPos(inside.x, inside.y);
        const HWND window = shown(owner);
        ASSERT_TRUE(window) << inside.x << ',' << inside.y;
        SendMessageA(window, WM_CLOSE, 0, 0);
    }
}

TEST_F(HintWindowTest, TakesNoFocusAndStandsWhereItsPlaceIs) {
    HintOwner owner;
    SetActiveWindow(owner.handle());
    const HWND window = shown(owner);
    EXPECT_NE(GetActiveWindow(), window);
    EXPECT_EQ(GetWindow(window, GW_OWNER), owner.handle());
    RECT workArea{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
    const SIZE extent =
        framework::hintExtent("A hint", HintStyle::Rounded, framework::maxHintWidth(workArea));
    const RECT expected = framework::hintRectangle(extent, {400, 300}, workArea);
    const RECT place = placeOf(window);
    EXPECT_TRUE(EqualRect(&place, &expected));
    EXPECT_EQ(place.top, 318);
}

TEST_F(HintWindowTest, NearEachEdgeOfTheScreenItStaysInsideTheWorkArea) {
    RECT workArea{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
    HintOwner owner(workArea);
    const LONG right = workArea.right - 1;
    const LONG bottom = workArea.bottom - 1;
    for (const HintStyle style : {HintStyle::Rounded, HintStyle::Plain})
        for (const POINT point : {POINT{0, 0}, POINT{right, 0}, POINT{0, bottom}, POINT{right, bottom},
                                  POINT{right, 300}, POINT{400, bottom}, POINT{0, 300}, POINT{400, 0}}) {
            Hint hint = hintAt(point);
            hint.style = style;
            const HWND window = shown(owner, hint);
            const RECT place = placeOf(window);
            RECT common{};
            IntersectRect(&common, &place, &workArea);
            EXPECT_TRUE(EqualRect(&common, &place)) << point.x << ',' << point.y;
            SendMessageA(window, WM_CLOSE, 0, 0);
        }
}

TEST_F(HintWindowTest, ASecondOneForTheSameOwnerIsGoneAtOnce) {
    HintOwner owner;
    HintOwner other;
    const HWND window = shown(owner);
    EXPECT_FALSE(HintWindow::show(&owner, hintAt({410, 310}, "another")));
    EXPECT_EQ(hints(), std::vector<HWND>{window});
    EXPECT_TRUE(HintWindow::show(&other, hintAt({410, 310}))) << "another owner has its own";
    EXPECT_EQ(hints().size(), 2U);
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(HintWindow::show(&owner, hintAt({400, 300}))) << "the first one is gone";
}

TEST_F(HintWindowTest, LetsTheMouseThroughToItsOwner) {
    HintOwner owner;
    const HWND window = shown(owner);
    EXPECT_EQ(SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(400, 330)), HTTRANSPARENT);
    EXPECT_EQ(WindowFromPoint({400, 330}), owner.handle());
    EXPECT_TRUE(IsWindow(window));
}

} // namespace
