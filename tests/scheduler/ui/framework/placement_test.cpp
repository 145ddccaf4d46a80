#include "scheduler/ui/framework/placement.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace {

int taskBarWidth = 0; ///< of one at the left edge

BOOL WINAPI monitorWithTaskBar(HMONITOR monitor, MONITORINFO* info) {
    static const auto original =
        test::platformFunction<decltype(&GetMonitorInfoA)>("user32.dll", "GetMonitorInfoA");
    const BOOL known = original(monitor, info);
    info->rcWork.left += taskBarWidth;
    return known;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(GetMonitorInfoA, "_GetMonitorInfoA@8", monitorWithTaskBar);

namespace {

using base::WindowState;
using framework::applyPlacement;
using framework::capturePlacement;

class Placement : public ::testing::Test {
protected:
    void SetUp() override {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = WS_OVERLAPPEDWINDOW;
        ASSERT_TRUE(window_.create(windowClass, parameters));
        SetWindowPos(window_.handle(), nullptr, 30, 40, 300, 200, SWP_NOZORDER | SWP_NOACTIVATE);
    }

    RECT place() const {
        RECT rectangle{};
        GetWindowRect(window_.handle(), &rectangle);
        return rectangle;
    }

    static WindowState bytesOf(const WINDOWPLACEMENT& placement) {
        WindowState bytes{};
        std::memcpy(bytes.data(), &placement, sizeof(placement));
        return bytes;
    }

    static WINDOWPLACEMENT placed(const RECT& rectangle, UINT showCommand) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof(placement);
        placement.showCmd = showCommand;
        placement.rcNormalPosition = rectangle;
        return placement;
    }

    framework::Window window_;
};

TEST_F(Placement, IsTheWindowsPlacementAndSeventeenZeroBytes) {
    const WindowState bytes = capturePlacement(window_.handle());
    WINDOWPLACEMENT placement{};
    std::memcpy(&placement, bytes.data(), sizeof(placement));
    EXPECT_EQ(placement.length, 44U);
    EXPECT_EQ(placement.rcNormalPosition.left, 30);
    EXPECT_EQ(placement.rcNormalPosition.right, 330);
    EXPECT_TRUE(std::all_of(bytes.begin() + 44, bytes.end(), [](std::byte b) { return b == std::byte{}; }));
}

TEST_F(Placement, ComesBackAndShowsNothing) {
    const WindowState bytes = capturePlacement(window_.handle());
    SetWindowPos(window_.handle(), nullptr, 0, 0, 100, 100, SWP_NOZORDER | SWP_NOACTIVATE);
    int showCommand = SW_SHOWNORMAL;
    EXPECT_TRUE(applyPlacement(window_.handle(), bytes, showCommand));
    EXPECT_EQ(place().left, 30);
    EXPECT_EQ(place().top, 40);
    EXPECT_EQ(place().right, 330);
    EXPECT_EQ(place().bottom, 240);
    EXPECT_EQ(showCommand, SW_SHOWNORMAL);
    EXPECT_FALSE(IsWindowVisible(window_.handle()));
}

TEST_F(Placement, BytesThatHoldNoneChangeNothing) {
    WindowState bytes{};
    int showCommand = SW_SHOWNORMAL;
    EXPECT_FALSE(applyPlacement(window_.handle(), bytes, showCommand));
    bytes.fill(std::byte{0xFF});
    EXPECT_FALSE(applyPlacement(window_.handle(), bytes, showCommand));
    EXPECT_EQ(place().left, 30);
}

TEST_F(Placement, APlaceOutsideEveryWorkAreaChangesNothing) {
    int showCommand = SW_SHOWNORMAL;
    for (const RECT& outside :
         {RECT{-5000, -5000, -4000, -4000}, RECT{100000, 100, 100400, 300}, RECT{50, 50, 50, 50}})
        EXPECT_FALSE(applyPlacement(window_.handle(), bytesOf(placed(outside, SW_SHOWNORMAL)), showCommand));
    EXPECT_EQ(place().left, 30);
}

TEST_F(Placement, APlaceCountsFromTheCornerOfTheWorkArea) {
    taskBarWidth = 200;
    int showCommand = SW_SHOWNORMAL;
    const RECT besideTheTaskBar{0, 0, 150, 100};
    EXPECT_TRUE(
        applyPlacement(window_.handle(), bytesOf(placed(besideTheTaskBar, SW_SHOWNORMAL)), showCommand));
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const RECT beyondTheScreen{width - 100, 0, width, 100};
    EXPECT_FALSE(
        applyPlacement(window_.handle(), bytesOf(placed(beyondTheScreen, SW_SHOWNORMAL)), showCommand));
    taskBarWidth = 0;
}

TEST_F(Placement, AMaximisedWindowComesBackMaximisedUnlessItIsToBeHidden) {
    const WindowState bytes = bytesOf(placed({10, 20, 210, 220}, SW_SHOWMAXIMIZED));
    int showCommand = SW_SHOWNORMAL;
    EXPECT_TRUE(applyPlacement(window_.handle(), bytes, showCommand));
    EXPECT_EQ(showCommand, SW_SHOWMAXIMIZED);
    showCommand = SW_SHOWMINNOACTIVE;
    EXPECT_TRUE(applyPlacement(window_.handle(), bytes, showCommand));
    EXPECT_EQ(showCommand, SW_SHOWMINNOACTIVE);
}

TEST_F(Placement, AMinimisedWindowComesBackAsNormal) {
    int showCommand = SW_SHOWNORMAL;
    EXPECT_TRUE(
        applyPlacement(window_.handle(), bytesOf(placed({10, 20, 210, 220}, SW_SHOWMINIMIZED)), showCommand));
    EXPECT_EQ(showCommand, SW_SHOWNORMAL);
    EXPECT_FALSE(IsIconic(window_.handle()));
    EXPECT_EQ(place().left, 10);
}

} // namespace
