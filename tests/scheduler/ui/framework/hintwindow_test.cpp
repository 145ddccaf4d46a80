#include "scheduler/ui/framework/gdihandles.h"
#include "tests/scheduler/ui/framework/hintfixture.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/allocations.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/windowlooks.h"

#include <memory>
#include <string>

namespace {

using framework::HintStyle;
using test::hintAt;
using test::HintOwner;
using test::hints;
using test::Override;
using test::placeOf;

constexpr HintStyle styles[] = {HintStyle::Rounded, HintStyle::Plain};

class HintWindow : public test::HintTest {
protected:
    static bool show(HintOwner& owner, const framework::Hint& hint = hintAt({400, 300})) {
        return framework::HintWindow::show(&owner, hint);
    }
};

TEST_F(HintWindow, NeedsATextAndThePointerInsideItsOwner) {
    HintOwner owner;
    EXPECT_FALSE(show(owner, hintAt({400, 300}, "")));
    for (const POINT outside : {POINT{199, 300}, POINT{600, 300}, POINT{400, 149}, POINT{400, 450}}) {
        SetCursorPos(outside.x, outside.y);
        EXPECT_FALSE(show(owner)) << outside.x << ',' << outside.y;
    }
    EXPECT_TRUE(hints().empty());
    for (const POINT inside : {POINT{200, 150}, POINT{599, 449}, POINT{400, 300}}) {
        SetCursorPos(inside.x, inside.y);
        const HWND window = shown(owner);
        ASSERT_TRUE(window) << inside.x << ',' << inside.y;
        SendMessageA(window, WM_CLOSE, 0, 0);
    }
}

TEST_F(HintWindow, IsCentredBelowItsPointAndTakesNeitherFocusNorMouse) {
    HintOwner owner;
    SetActiveWindow(owner.handle());
    const HWND window = shown(owner);
    EXPECT_EQ(GetActiveWindow(), owner.handle());
    EXPECT_EQ(GetWindow(window, GW_OWNER), owner.handle());
    EXPECT_EQ(SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(400, 330)), HTTRANSPARENT);
    EXPECT_EQ(WindowFromPoint({400, 330}), owner.handle());
    const SIZE extent = framework::hintExtent("A hint", HintStyle::Rounded, 1000);
    EXPECT_EQ(framework::sizeOf(window).cx, extent.cx + 12);
    EXPECT_EQ(framework::sizeOf(window).cy, extent.cy + 4);
    EXPECT_NEAR((placeOf(window).left + placeOf(window).right) / 2, 400, 1);
    EXPECT_EQ(placeOf(window).top, 318);
}

TEST_F(HintWindow, StaysInsideTheWorkAreaNearTheEdgesOfTheScreen) {
    RECT workArea{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
    HintOwner owner(workArea);
    for (const HintStyle style : styles)
        for (const POINT point : {POINT{0, -30}, POINT{workArea.right - 1, workArea.bottom - 1}}) {
            framework::Hint hint = hintAt(point);
            hint.style = style;
            const HWND window = shown(owner, hint);
            const RECT place = placeOf(window);
            EXPECT_EQ(point.x == 0 ? place.left : place.right, point.x == 0 ? 0 : workArea.right);
            EXPECT_EQ(point.x == 0 ? place.top : place.bottom, point.x == 0 ? 0 : workArea.bottom);
            SendMessageA(window, WM_CLOSE, 0, 0);
        }
}

TEST_F(HintWindow, AnOwnerHasAtMostOne) {
    HintOwner owner;
    HintOwner other;
    const HWND window = shown(owner);
    EXPECT_FALSE(show(owner, hintAt({410, 310}, "another")));
    EXPECT_EQ(hints(), std::vector<HWND>{window});
    EXPECT_TRUE(show(other)) << "another owner has its own";
    EXPECT_EQ(hints().size(), 2U);
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(show(owner)) << "the first one is closed";
}

TEST_F(HintWindow, IsDestroyedWithItsOwnersWindowOrObject) {
    const HintOwner frame;
    for (const HWND parent : {HWND{}, frame.handle()})
        for (const bool objectIsDestroyedFirst : {false, true}) {
            auto owner = std::make_unique<HintOwner>(RECT{150, 100, 500, 400}, parent);
            const HWND window = shown(*owner);
            if (objectIsDestroyedFirst)
                owner.reset();
            else
                DestroyWindow(owner->handle());
            EXPECT_TRUE(test::pumpUntil([&] { return !IsWindow(window); })) << objectIsDestroyedFirst;
        }
}

TEST_F(HintWindow, IsDestroyedWhenItsOwnersObjectDetaches) {
    const HintOwner frame;
    const HWND edit = test::createPlain("EDIT", WS_CHILD | WS_VISIBLE, {50, 50, 350, 250}, frame.handle());
    HWND window = nullptr;
    {
        framework::Window control;
        ASSERT_TRUE(control.attach(edit));
        window = shown(control);
    }
    SendMessageA(edit, WM_CHAR, 'x', 0);
    EXPECT_TRUE(test::pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_TRUE(IsWindow(edit));
}

TEST_F(HintWindow, DestroyedFromOutsidePostsNoThreadMessage) {
    HintOwner owner;
    for (int i = 0; i < 3; ++i) {
        DestroyWindow(shown(owner));
        SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
        MSG message{};
        EXPECT_FALSE(PeekMessageA(&message, reinterpret_cast<HWND>(-1), 0, 0, PM_REMOVE))
            << "a message to the thread";
        test::pumpUntilIdle();
    }
}

TEST_F(HintWindow, PaintingLeaksNoGdiObjects) {
    HintOwner owner;
    const auto showAndPaint = [&](HintStyle style) {
        framework::Hint hint = hintAt({400, 300}, "A hint of several words");
        hint.style = style;
        const HWND window = shown(owner, hint);
        EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
        UpdateWindow(window);
        EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));
        SendMessageA(window, WM_CLOSE, 0, 0);
    };
    for (const HintStyle style : styles) {
        showAndPaint(style); // fills the caches
        const unsigned before = test::gdiObjectCount();
        for (int i = 0; i < 20; ++i)
            showAndPaint(style);
        EXPECT_EQ(test::gdiObjectCount(), before);
        const framework::MemoryContext counted(CreateCompatibleDC(nullptr));
        EXPECT_GT(test::gdiObjectCount(), before) << "the count notices a new object";
    }
}

TEST_F(HintWindow, IsDrawnInMemoryAndCopiedInOneStep) {
    HintOwner owner;
    const HWND window = shown(owner);
    const SIZE size = framework::sizeOf(window);
    const std::string whole = std::to_string(size.cx) + "x" + std::to_string(size.cy);
    std::string drawing;
    const auto record = [&](const std::string& act, HDC context) {
        drawing += act + (GetObjectType(context) == OBJ_MEMDC ? " memory; " : " window; ");
    };
    const Override<test::FillRectCall> fill([&](HDC context, const RECT* area, HBRUSH brush) {
        record("fill", context);
        return test::FillRectCall::original(context, area, brush);
    });
    const Override<test::BitBltCall> copy([&](HDC to, int x, int y, int width, int height, auto... from) {
        record("copy " + std::to_string(width) + "x" + std::to_string(height) + " to", to);
        return test::BitBltCall::original(to, x, y, width, height, from...);
    });
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    EXPECT_EQ(drawing, "fill memory; copy " + whole + " to window; ");
}

TEST_F(HintWindow, IsShownForSevenSecondsByDefault) {
    HintOwner owner;
    UINT timer = 0;
    const Override<test::SetTimerCall> timers(
        [&](HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC act) {
            if (id == 1)
                timer = milliseconds;
            return test::SetTimerCall::original(window, id, milliseconds, act);
        });
    framework::Hint hint = hintAt({400, 300});
    hint.displayMilliseconds = framework::Hint().displayMilliseconds;
    SendMessageA(shown(owner, hint), WM_CLOSE, 0, 0);
    EXPECT_EQ(timer, 7000U);
    hint.displayMilliseconds = 60'000;
    shown(owner, hint);
    EXPECT_EQ(timer, 60'000U);
}

TEST_F(HintWindow, IsFreedWithoutAllocatingAfterItsWindowIsDestroyed) {
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(framework::HintWindow::show(nullptr, hintAt({400, 300})));
    for (const HWND window : hints())
        DestroyWindow(window);
    const std::size_t before = test::deallocationCount;
    PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
    PostQuitMessage(7);
    {
        const test::RefusedAllocations refused;
        EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 7);
    }
    EXPECT_GE(test::deallocationCount, before + 2) << "both are freed";
}

} // namespace
