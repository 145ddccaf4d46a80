#include "scheduler/ui/framework/placement.h"
#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

using base::WindowState;

class Placement : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.open());
        move({30, 40, 330, 240});
    }
    void move(const RECT& to) const {
        SetWindowPos(window.handle(), nullptr, to.left, to.top, to.right - to.left, to.bottom - to.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    bool isAt(const RECT& expected) const {
        const RECT place = test::placeOf(window.handle());
        return EqualRect(&place, &expected);
    }
    bool apply(const WindowState& bytes) {
        return framework::applyPlacement(window.handle(), bytes, showCommand);
    }
    bool apply(const RECT& rectangle, UINT command = SW_SHOWNORMAL) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof(placement);
        placement.showCmd = command;
        placement.rcNormalPosition = rectangle;
        WindowState bytes{};
        std::memcpy(bytes.data(), &placement, sizeof(placement));
        return apply(bytes);
    }

    test::ProbeWindow window;
    int showCommand = SW_SHOWNORMAL;
};

TEST_F(Placement, IsAWindowPlacementPlus17ZeroBytesAndIsRestoredWithoutShowing) {
    const WindowState bytes = framework::capturePlacement(window.handle());
    WINDOWPLACEMENT placement{};
    std::memcpy(&placement, bytes.data(), sizeof(placement));
    EXPECT_EQ(placement.length, 44U);
    EXPECT_EQ(placement.rcNormalPosition.left, 30);
    EXPECT_EQ(placement.rcNormalPosition.right, 330);
    EXPECT_TRUE(std::all_of(bytes.begin() + 44, bytes.end(), [](std::byte b) { return b == std::byte{}; }));
    move({0, 0, 100, 100});
    EXPECT_TRUE(apply(bytes));
    EXPECT_TRUE(isAt({30, 40, 330, 240}));
    EXPECT_EQ(showCommand, SW_SHOWNORMAL);
    EXPECT_FALSE(IsWindowVisible(window.handle()));
}

TEST_F(Placement, InvalidDataAndPlacesOutsideEveryWorkAreaAreIgnored) {
    WindowState bytes{};
    EXPECT_FALSE(apply(bytes));
    bytes.fill(std::byte{0xFF});
    EXPECT_FALSE(apply(bytes));
    for (const RECT& outside :
         {RECT{-5000, -5000, -4000, -4000}, RECT{100000, 100, 100400, 300}, RECT{50, 50, 50, 50}})
        EXPECT_FALSE(apply(outside));
    EXPECT_TRUE(isAt({30, 40, 330, 240}));
}

TEST_F(Placement, IsRelativeToTheWorkArea) {
    const test::Override<test::GetMonitorInfoACall> taskBar([](HMONITOR monitor, MONITORINFO* info) {
        const BOOL known = test::GetMonitorInfoACall::original(monitor, info);
        info->rcWork.left += 200;
        return known;
    });
    EXPECT_TRUE(apply({0, 0, 150, 100})) << "beside the task bar";
    const int width = GetSystemMetrics(SM_CXSCREEN);
    EXPECT_FALSE(apply({width - 100, 0, width, 100})) << "off the screen";
}

TEST_F(Placement, AMaximisedWindowIsRestoredUnlessItStartsHidden) {
    for (const auto& [asked, expected] :
         {std::pair{SW_SHOWNORMAL, SW_SHOWMAXIMIZED}, {SW_SHOWMINNOACTIVE, SW_SHOWMINNOACTIVE}}) {
        showCommand = asked;
        EXPECT_TRUE(apply({10, 20, 210, 220}, SW_SHOWMAXIMIZED));
        EXPECT_EQ(showCommand, expected);
    }
}

TEST_F(Placement, AMinimisedWindowIsRestoredAsNormal) {
    EXPECT_TRUE(apply({10, 20, 210, 220}, SW_SHOWMINIMIZED));
    EXPECT_EQ(showCommand, SW_SHOWNORMAL);
    EXPECT_FALSE(IsIconic(window.handle()));
    EXPECT_TRUE(isAt({10, 20, 210, 220}));
}

} // namespace
