// Whose death is a hint's own, and what it leaves behind.
#include "tests/scheduler/ui/framework/hintfixture.h"
#include "tests/support/gdiobjects.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using framework::Hint;
using framework::HintStyle;
using framework::HintWindow;
using framework::Window;
using test::hintAt;
using test::HintOwner;

using HintWindowDeath = test::HintWindowTest;

TEST_F(HintWindowDeath, DiesWithItsOwnersWindow) {
    HintOwner owner;
    HintOwner other({0, 0, 50, 50});
    const HWND window = shown(owner);
    DestroyWindow(owner.handle());
    EXPECT_FALSE(IsWindow(window));
    other.pump();
    SetCursorPos(10, 10);
    EXPECT_TRUE(HintWindow::show(&other, hintAt({10, 10})));
}

TEST_F(HintWindowDeath, DiesWithItsOwner) {
    HintOwner other({0, 0, 50, 50});
    HWND window = nullptr;
    {
        HintOwner owner;
        window = shown(owner);
    }
    EXPECT_FALSE(IsWindow(window));
    other.pump();
}

TEST_F(HintWindowDeath, DiesWithAnOwnerThatIsAChild) {
    HintOwner frame;
    auto child = std::make_unique<HintOwner>(RECT{50, 50, 350, 250}, frame.handle());
    HWND window = shown(*child);
    child.reset();
    EXPECT_TRUE(frame.pumpUntil([&] { return !IsWindow(window); }))
        << "the child's object took its window along";

    child = std::make_unique<HintOwner>(RECT{50, 50, 350, 250}, frame.handle());
    window = shown(*child);
    DestroyWindow(child->handle());
    EXPECT_TRUE(frame.pumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(HintWindowDeath, DiesWhenItsOwnersObjectLetsGoOfTheWindow) {
    HintOwner frame;
    const HWND edit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 50, 50, 300, 200, frame.handle(),
                                      nullptr, nullptr, nullptr);
    HWND window = nullptr;
    {
        Window control;
        ASSERT_TRUE(control.attach(edit));
        window = shown(control);
    }
    SendMessageA(edit, WM_CHAR, 'x', 0);
    EXPECT_TRUE(frame.pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_TRUE(IsWindow(edit));
}

TEST_F(HintWindowDeath, DestroyedByOthersItLeavesItsOwnerInPeace) {
    HintOwner owner;
    for (int i = 0; i < 3; ++i) {
        DestroyWindow(shown(owner));
        SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
        MSG message{};
        EXPECT_FALSE(PeekMessageA(&message, reinterpret_cast<HWND>(-1), 0, 0, PM_REMOVE)) << "for the thread";
        owner.pump();
    }
}

/// How many objects `count` calls leave behind, after one that makes what is made once.
int objectsLeftBy(const std::function<void()>& act, int count) {
    act();
    const unsigned before = test::gdiObjectCount();
    for (int i = 0; i < count; ++i)
        act();
    return static_cast<int>(test::gdiObjectCount() - before);
}

TEST_F(HintWindowDeath, PaintingLeavesNoObjectsBehind) {
    HintOwner owner;
    for (const HintStyle style : {HintStyle::Rounded, HintStyle::Plain}) {
        Hint hint = hintAt({400, 300}, "A hint of several words");
        hint.style = style;
        const HWND window = shown(owner, hint);
        const auto repaint = [&] {
            RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
            EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE)) << "painted";
        };
        EXPECT_EQ(objectsLeftBy(repaint, 50), 0);
        SendMessageA(window, WM_CLOSE, 0, 0);
    }
}

TEST_F(HintWindowDeath, AWholeLifeLeavesNoObjectsBehind) {
    HintOwner owner;
    const auto liveAs = [&](HintStyle style) {
        return [&, style] {
            Hint hint = hintAt({400, 300}, "A hint of several words");
            hint.style = style;
            const HWND window = shown(owner, hint);
            UpdateWindow(window);
            SendMessageA(window, WM_CLOSE, 0, 0);
        };
    };
    for (const HintStyle style : {HintStyle::Rounded, HintStyle::Plain})
        EXPECT_EQ(objectsLeftBy(liveAs(style), 20), 0);
}

} // namespace
