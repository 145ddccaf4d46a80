#include "tests/scheduler/ui/framework/hintfixture.h"

namespace {

using framework::HintWindow;
using test::hintAt;
using test::HintOwner;
using test::hints;
using test::pumpUntilIdle;

constexpr UINT closing[] = {WM_CHAR, WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN, WM_MOUSELEAVE};

class HintClosing : public test::HintTest {
protected:
    static bool survivesPumping(HWND window) {
        pumpUntilIdle();
        return IsWindow(window);
    }
};

TEST_F(HintClosing, TheTimerPostsAClose) {
    HintOwner owner;
    const HWND window = shown(owner);
    SendMessageA(window, WM_TIMER, 2, 0);
    EXPECT_TRUE(survivesPumping(window)) << "another timer";
    SendMessageA(window, WM_TIMER, 1, 0);
    EXPECT_TRUE(IsWindow(window)) << "the close is only posted";
    EXPECT_FALSE(survivesPumping(window));
}

TEST_F(HintClosing, OwnerInputClosesItAndStillReachesTheOwner) {
    HintOwner owner;
    for (const UINT input : closing) {
        const HWND window = shown(owner);
        owner.seen.clear();
        PostMessageA(owner.handle(), input, 'x', 0);
        EXPECT_FALSE(survivesPumping(window)) << input;
        EXPECT_TRUE(owner.hasSeen(input)) << input;
    }
    // Sent messages bypass the message loop.
    const HWND window = shown(owner);
    SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
    EXPECT_TRUE(IsWindow(window)) << "the close is only posted";
    EXPECT_FALSE(survivesPumping(window));
}

TEST_F(HintClosing, OnlyItsOwnerCanDismissIt) {
    HintOwner owner;
    HintOwner other({100, 100, 500, 400});
    HintWindow::dismiss(owner); // no hint yet
    const HWND window = shown(owner);
    ASSERT_TRUE(HintWindow::show(nullptr, hintAt({50, 50})));
    HintWindow::dismiss(other);
    EXPECT_TRUE(survivesPumping(window));
    HintWindow::dismiss(owner);
    EXPECT_FALSE(survivesPumping(window));
    HintWindow::dismiss(owner); // no hint any more
    pumpUntilIdle();
    EXPECT_EQ(hints().size(), 1U) << "the hint without an owner stays";
    EXPECT_TRUE(HintWindow::show(&owner, hintAt({400, 300}))) << "the owner can show another hint";
}

TEST_F(HintClosing, OtherMessagesOfItsOwnerDoNotCloseIt) {
    HintOwner owner;
    const HWND window = shown(owner);
    for (const UINT other : {UINT{WM_MOUSEMOVE}, UINT{WM_KEYDOWN}, UINT{WM_KEYUP}, UINT{WM_LBUTTONUP},
                             UINT{WM_COMMAND}, UINT{WM_TIMER}, UINT{WM_SETTEXT}})
        SendMessageA(owner.handle(), other, 0, 0);
    EXPECT_TRUE(survivesPumping(window));
}

TEST_F(HintClosing, InputToAChildOfItsOwnerClosesIt) {
    HintOwner owner;
    const HintOwner stranger({700, 500, 800, 600});
    const HWND edit = test::createPlain("EDIT", WS_CHILD | WS_VISIBLE, {0, 0, 100, 20}, owner.handle());
    for (const UINT input : {UINT{WM_CHAR}, UINT{WM_LBUTTONDOWN}}) {
        const HWND window = shown(owner);
        PostMessageA(stranger.handle(), input, 'x', 0);
        EXPECT_TRUE(survivesPumping(window)) << "another window's input";
        PostMessageA(edit, input, 'x', 0);
        EXPECT_FALSE(survivesPumping(window)) << input;
    }
}

TEST_F(HintClosing, AHintClosesWhenTheMouseLeavesItsOwner) {
    UINT usualHover = 0;
    SystemParametersInfoA(SPI_GETMOUSEHOVERTIME, 0, &usualHover, 0);
    constexpr UINT hover = USER_TIMER_MINIMUM;
    SystemParametersInfoA(SPI_SETMOUSEHOVERTIME, hover, nullptr, 0);
    for (const bool isOverAChild : {false, true}) {
        SetCursorPos(400, 300);
        HintOwner owner;
        if (isOverAChild) {
            test::createPlain("EDIT", WS_CHILD | WS_VISIBLE, {100, 100, 300, 200}, owner.handle());
            ASSERT_NE(WindowFromPoint({400, 300}), owner.handle());
        }
        const HWND window = shown(owner);
        // Even on a slow machine, the hover timer fires before a timer with twice its time.
        SetTimer(owner.handle(), 1, 2 * hover, nullptr);
        EXPECT_TRUE(test::pumpUntil([&] { return owner.hasSeen(WM_TIMER); }));
        ASSERT_TRUE(IsWindow(window)) << "the mouse is still there";
        SetCursorPos(100, 100);
        EXPECT_TRUE(test::pumpUntil([&] { return !IsWindow(window); })) << isOverAChild;
        EXPECT_NE(owner.hasSeen(WM_MOUSELEAVE), isOverAChild);
    }
    SystemParametersInfoA(SPI_SETMOUSEHOVERTIME, usualHover, nullptr, 0);
}

TEST_F(HintClosing, AHintWithoutAnOwnerClosesOnItsOwnInput) {
    SetCursorPos(900, 700); // without an owner the pointer may be anywhere
    for (const UINT input : closing) {
        ASSERT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})));
        ASSERT_EQ(hints().size(), 1U);
        const HWND window = hints().front();
        EXPECT_EQ(SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(400, 330)), HTCLIENT);
        EXPECT_TRUE(survivesPumping(window));
        SendMessageA(window, input, 'x', 0);
        EXPECT_FALSE(survivesPumping(window)) << input;
    }
    EXPECT_FALSE(HintWindow::show(nullptr, hintAt({400, 300}, "")));
    EXPECT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})));
    EXPECT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})))
        << "hints without an owner are not limited to one";
}

} // namespace
