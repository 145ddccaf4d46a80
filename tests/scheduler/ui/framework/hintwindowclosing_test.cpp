// What closes a hint that is shown.
#include "tests/scheduler/ui/framework/hintfixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using framework::Hint;
using framework::HintWindow;
using test::hintAt;
using test::HintOwner;
using test::hints;

using HintWindowClosing = test::HintWindowTest;

constexpr UINT closing[] = {WM_CHAR, WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN, WM_MOUSELEAVE};

TEST_F(HintWindowClosing, IsShownForSevenSeconds) {
    EXPECT_EQ(Hint().displayMilliseconds, 7000U);
    HintOwner owner;
    Hint hint = hintAt({400, 300});
    hint.displayMilliseconds = Hint().displayMilliseconds;
    const HWND window = shown(owner, hint);
    const DWORD start = GetTickCount();
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_GE(GetTickCount() - start, 6900U);
}

TEST_F(HintWindowClosing, ItsTimerClosesIt) {
    HintOwner owner;
    Hint brief = hintAt({400, 300});
    brief.displayMilliseconds = 60;
    const HWND window = shown(owner, brief);
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));

    const HWND another = shown(owner);
    SendMessageA(another, WM_TIMER, 2, 0);
    owner.pump();
    EXPECT_TRUE(IsWindow(another)) << "a timer that is not its own";
    SendMessageA(another, WM_TIMER, 1, 0);
    EXPECT_TRUE(IsWindow(another)) << "the closing is posted";
    owner.pump();
    EXPECT_FALSE(IsWindow(another));
}

TEST_F(HintWindowClosing, InputOfItsOwnerClosesIt) {
    HintOwner owner;
    for (const UINT input : closing) {
        const HWND window = shown(owner);
        owner.seen.clear();
        PostMessageA(owner.handle(), input, 'x', 0);
        EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); })) << input;
        EXPECT_NE(std::ranges::find(owner.seen, input), owner.seen.end())
            << "and reaches the owner: " << input;
    }
    // Also where the message does not come through the program's loop.
    const HWND window = shown(owner);
    SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
    EXPECT_TRUE(IsWindow(window)) << "the closing is posted";
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(HintWindowClosing, ItsOwnerMayDismissItAndNoOther) {
    HintOwner owner;
    HintOwner other({100, 100, 500, 400});
    HintWindow::dismiss(owner); // there is none yet
    shown(owner);
    ASSERT_TRUE(HintWindow::show(nullptr, hintAt({50, 50})));
    HintWindow::dismiss(other);
    owner.pump();
    EXPECT_EQ(hints().size(), 2U);
    HintWindow::dismiss(owner);
    EXPECT_TRUE(owner.pumpUntil([] { return hints().size() == 1; }));
    HintWindow::dismiss(owner); // nor any more
    owner.pump();
    EXPECT_EQ(hints().size(), 1U) << "the one without an owner is nobody's to dismiss";
    EXPECT_TRUE(HintWindow::show(&owner, hintAt({400, 300}))) << "and its owner can show another";
}

TEST_F(HintWindowClosing, OtherMessagesOfItsOwnerDoNot) {
    HintOwner owner;
    const HWND window = shown(owner);
    for (const UINT other : {UINT{WM_MOUSEMOVE}, UINT{WM_KEYDOWN}, UINT{WM_KEYUP}, UINT{WM_LBUTTONUP},
                             UINT{WM_COMMAND}, UINT{WM_TIMER}, UINT{WM_SETTEXT}})
        SendMessageA(owner.handle(), other, 0, 0);
    owner.pump();
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(HintWindowClosing, InputOfItsOwnersChildrenClosesIt) {
    HintOwner owner;
    HintOwner stranger({700, 500, 800, 600});
    SetCursorPos(590, 440);
    const HWND edit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, owner.handle(),
                                      nullptr, nullptr, nullptr);
    for (const UINT input : {UINT{WM_CHAR}, UINT{WM_LBUTTONDOWN}}) {
        const HWND window = shown(owner);
        PostMessageA(stranger.handle(), input, 'x', 0);
        owner.pump();
        EXPECT_TRUE(IsWindow(window)) << "another window's input";
        PostMessageA(edit, input, 'x', 0);
        EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); })) << input;
    }
}

TEST_F(HintWindowClosing, TheMouseLeavingItsOwnerClosesIt) {
    HintOwner owner;
    const HWND window = shown(owner);
    owner.pumpUntilMouseIsChecked();
    ASSERT_TRUE(IsWindow(window)) << "the mouse is still there";
    SetCursorPos(100, 100);
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_NE(std::ranges::find(owner.seen, UINT{WM_MOUSELEAVE}), owner.seen.end());
}

TEST_F(HintWindowClosing, TheMouseOverAChildIsNotTakenForHavingLeft) {
    HintOwner owner;
    const HWND edit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 100, 100, 200, 100,
                                      owner.handle(), nullptr, nullptr, nullptr);
    ASSERT_EQ(WindowFromPoint({400, 300}), edit);
    const HWND window = shown(owner);
    owner.pumpUntilMouseIsChecked();
    ASSERT_TRUE(IsWindow(window));
    SetCursorPos(100, 100);
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(HintWindowClosing, WithoutAnOwnerItClosesOnItsOwnInput) {
    SetCursorPos(900, 700); // no owner, no rectangle for the pointer to be in
    HintOwner pumping({0, 0, 50, 50});
    for (const UINT input : closing) {
        ASSERT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})));
        ASSERT_EQ(hints().size(), 1U);
        const HWND window = hints().front();
        EXPECT_EQ(SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(400, 330)), HTCLIENT);
        pumping.pump();
        EXPECT_TRUE(IsWindow(window));
        SendMessageA(window, input, 'x', 0);
        EXPECT_TRUE(pumping.pumpUntil([&] { return !IsWindow(window); })) << input;
    }
    EXPECT_FALSE(HintWindow::show(nullptr, hintAt({400, 300}, "")));
    EXPECT_TRUE(HintWindow::show(nullptr, hintAt({400, 300})));
    EXPECT_TRUE(HintWindow::show(nullptr, hintAt({400, 300}))) << "no owner, no limit of one";
}

TEST_F(HintWindowClosing, MayBeClosedInsideItsOwnersHandlerForTheInputThatClosesIt) {
    HintOwner owner;
    const HWND window = shown(owner);
    SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
    SendMessageA(owner.handle(), WM_LBUTTONDOWN, 0, 0);
    SendMessageA(window, WM_TIMER, 1, 0); // three closings are posted, the first one does it
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindow(window));
    owner.pump();
    EXPECT_TRUE(shown(owner));
    owner.pump();
    EXPECT_EQ(hints().size(), 1U) << "what was posted to the one before does not close this one";
}

} // namespace
