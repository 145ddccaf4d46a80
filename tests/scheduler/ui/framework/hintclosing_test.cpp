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
    static bool outlivesTheQueue(HWND window) {
        pumpUntilIdle();
        return IsWindow(window);
    }
};

TEST_F(HintClosing, ItsOwnTimerPostsItsEnd) {
    HintOwner owner;
    const HWND window = shown(owner);
    SendMessageA(window, WM_TIMER, 2, 0);
    EXPECT_TRUE(outlivesTheQueue(window)) << "a timer that is not its own";
    SendMessageA(window, WM_TIMER, 1, 0);
    EXPECT_TRUE(IsWindow(window)) << "the closing is posted";
    EXPECT_FALSE(outlivesTheQueue(window));
}

TEST_F(HintClosing, InputOfItsOwnerClosesItAndReachesTheOwner) {
    HintOwner owner;
    for (const UINT input : closing) {
        const HWND window = shown(owner);
        owner.seen.clear();
        PostMessageA(owner.handle(), input, 'x', 0);
        EXPECT_FALSE(outlivesTheQueue(window)) << input;
        EXPECT_TRUE(owner.hasSeen(input)) << input;
    }
    // Sent messages do not come through the program's loop.
    const HWND window = shown(owner);
    SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
    EXPECT_TRUE(IsWindow(window)) << "the closing is posted";
    EXPECT_FALSE(outlivesTheQueue(window));
}

TEST_F(HintClosing, ItsOwnerMayDismissItAndNoOther) {
    HintOwner owner;
    HintOwner other({100, 100, 500, 400});
    HintWindow::dismiss(owner); // there is none yet
    const HWND window = shown(owner);
    ASSERT_TRUE(HintWindow::show(nullptr, hintAt({50, 50})));
    HintWindow::dismiss(other);
    EXPECT_TRUE(outlivesTheQueue(window));
    HintWindow::dismiss(owner);
    EXPECT_FALSE(outlivesTheQueue(window));
    HintWindow::dismiss(owner); // nor any more
    pumpUntilIdle();
    EXPECT_EQ(hints().size(), 1U) << "no owner dismisses a hint without one";
    EXPECT_TRUE(HintWindow::show(&owner, hintAt({400, 300}))) << "and its owner can show another";
}

TEST_F(HintClosing, OtherMessagesOfItsOwnerDoNot) {
    HintOwner owner;
    const HWND window = shown(owner);
    for (const UINT other : {UINT{WM_MOUSEMOVE}, UINT{WM_KEYDOWN}, UINT{WM_KEYUP}, UINT{WM_LBUTTONUP},
                             UINT{WM_COMMAND}, UINT{WM_TIMER}, UINT{WM_SETTEXT}})
        SendMessageA(owner.handle(), other, 0, 0);
    EXPECT_TRUE(outlivesTheQueue(window));
}

TEST_F(HintClosing, InputOfItsOwnersChildrenClosesIt) {
    HintOwner owner;
    const HintOwner stranger({700, 500, 800, 600});
    const HWND edit = test::createPlain("EDIT", WS_CHILD | WS_VISIBLE, {0, 0, 100, 20}, owner.handle());
    for (const UINT input : {UINT{WM_CHAR}, UINT{WM_LBUTTONDOWN}}) {
        const HWND window = shown(owner);
        PostMessageA(stranger.handle(), input, 'x', 0);
        EXPECT_TRUE(outlivesTheQueue(window)) << "another window's input";
        PostMessageA(edit, input, 'x', 0);
        EXPECT_FALSE(outlivesTheQueue(window)) << input;
    }
}

TEST_F(HintClosing, TheMouseLeavingItsOwnerAndItsChildrenClosesIt) {
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
        // The platform's hover timer fires before one of twice its time, however slow the machine.
        SetTimer(owner.handle(), 1, 2 * hover, nullptr);
        EXPECT_TRUE(test::pumpUntil([&] { return owner.hasSeen(WM_TIMER); }));
        ASSERT_TRUE(IsWindow(window)) << "the mouse is still there";
        SetCursorPos(100, 100);
        EXPECT_TRUE(test::pumpUntil([&] { return !IsWindow(window); })) << isOverAChild;
        EXPECT_NE(owner.hasSeen(WM_MOUSELEAVE), isOverAChild);
    }
    SystemParametersInfoA(SPI_SETMOUSEHOVERTIME, usualHover, nullptr, 0);
}

TEST_F(HintClosing, WithoutAnOwnerItClosesOnItsOwnInput) {
    SetCursorPos(900, 700); // no owner, no rectangle for the pointer to be in
    for (const UINT input : closing) {
        ASSERT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})));
        ASSERT_EQ(hints().size(), 1U);
        const HWND window = hints().front();
        EXPECT_EQ(SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(400, 330)), HTCLIENT);
        EXPECT_TRUE(outlivesTheQueue(window));
        SendMessageA(window, input, 'x', 0);
        EXPECT_FALSE(outlivesTheQueue(window)) << input;
    }
    EXPECT_FALSE(HintWindow::show(nullptr, hintAt({400, 300}, "")));
    EXPECT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})));
    EXPECT_TRUE(HintWindow::show(nullptr, hintAt({400, 300}))) << "no owner, no limit of one";
}

} // namespace
