#include "lib/base/callbacks.h"
#include "scheduler/ui/framework/hintwindow.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/patience.h"
#include "tests/support/windowlooks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

namespace {

using framework::Handled;
using framework::Hint;
using framework::HintStyle;
using framework::HintWindow;
using framework::Message;
using framework::MessagePump;
using framework::Window;
using test::placeOf;

constexpr UINT_PTR stopTimer = 99;

constexpr UINT closing[] = {WM_CHAR, WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN, WM_MOUSELEAVE};

class Owner : public Window {
public:
    std::vector<UINT> seen;

    explicit Owner(RECT place = {200, 150, 600, 450}, HWND parent = nullptr) {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = parent ? WS_CHILD | WS_VISIBLE : WS_POPUP | WS_VISIBLE;
        parameters.x = place.left;
        parameters.y = place.top;
        parameters.width = place.right - place.left;
        parameters.height = place.bottom - place.top;
        parameters.parent = parent;
        create(windowClass, parameters);
    }
    Handled onMessage(const Message& message) override {
        seen.push_back(message.id);
        if (message.id == WM_TIMER && message.wParam == stopTimer)
            endModal(1);
        return std::nullopt;
    }
    /// Runs the program's own loop for a moment. A timer ends it, as timers wait for everything else.
    void pump(UINT milliseconds = 20) {
        beginModal();
        SetTimer(handle(), stopTimer, milliseconds, nullptr);
        MessagePump::instance().runModalLoop(*this);
        KillTimer(handle(), stopTimer);
    }
    /// Runs the loop until the platform has looked where the mouse is. It may do so by a timer of the hover
    /// time, whose turn is before that of one for twice as long, however slow the machine.
    void pumpUntilMouseIsChecked() {
        UINT hover = 0;
        EXPECT_TRUE(SystemParametersInfoA(SPI_GETMOUSEHOVERTIME, 0, &hover, 0));
        pump(2 * hover);
    }
    /// Runs the loop until the condition holds or a test's patience ends.
    bool pumpUntil(const std::function<bool()>& condition) {
        const DWORD start = GetTickCount();
        while (!condition() && GetTickCount() - start < test::patience)
            pump();
        return condition();
    }
};

CALLED_BY_PLATFORM BOOL CALLBACK collectHint(HWND window, LPARAM list) {
    if (dynamic_cast<HintWindow*>(Window::of(window)) && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// The hint windows of this thread.
std::vector<HWND> hints() {
    std::vector<HWND> found;
    EnumThreadWindows(GetCurrentThreadId(), &collectHint, reinterpret_cast<LPARAM>(&found));
    return found;
}

Hint hintAt(POINT point, const char* text = "A hint") {
    Hint hint;
    hint.text = text;
    hint.point = point;
    hint.displayMilliseconds = 2 * test::patience; // so that it is not its time that closes it
    return hint;
}

class HintWindowTest : public ::testing::Test {
protected:
    void SetUp() override { SetCursorPos(400, 300); }
    void TearDown() override {
        for (const HWND window : hints())
            SendMessageA(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(hints().empty());
    }

    HWND shown(Window& owner, const Hint& hint = hintAt({400, 300})) {
        EXPECT_TRUE(HintWindow::show(&owner, hint));
        const std::vector<HWND> windows = hints();
        EXPECT_EQ(windows.size(), 1U);
        return windows.empty() ? nullptr : windows.front();
    }
};

TEST_F(HintWindowTest, IsShownForATextAndAPointerInsideItsOwner) {
    Owner owner;
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
    Owner owner;
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
    Owner owner(workArea);
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
    Owner owner;
    Owner other;
    const HWND window = shown(owner);
    EXPECT_FALSE(HintWindow::show(&owner, hintAt({410, 310}, "another")));
    EXPECT_EQ(hints(), std::vector<HWND>{window});
    EXPECT_TRUE(HintWindow::show(&other, hintAt({410, 310}))) << "another owner has its own";
    EXPECT_EQ(hints().size(), 2U);
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(HintWindow::show(&owner, hintAt({400, 300}))) << "the first one is gone";
}

TEST_F(HintWindowTest, IsShownForSevenSeconds) {
    EXPECT_EQ(Hint().displayMilliseconds, 7000U);
    Owner owner;
    Hint hint = hintAt({400, 300});
    hint.displayMilliseconds = Hint().displayMilliseconds;
    const HWND window = shown(owner, hint);
    const DWORD start = GetTickCount();
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_GE(GetTickCount() - start, 6900U);
}

TEST_F(HintWindowTest, ItsTimerClosesIt) {
    Owner owner;
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

TEST_F(HintWindowTest, InputOfItsOwnerClosesIt) {
    Owner owner;
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

TEST_F(HintWindowTest, ItsOwnerMayDismissItAndNoOther) {
    Owner owner;
    Owner other({100, 100, 500, 400});
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

TEST_F(HintWindowTest, OtherMessagesOfItsOwnerDoNot) {
    Owner owner;
    const HWND window = shown(owner);
    for (const UINT other : {UINT{WM_MOUSEMOVE}, UINT{WM_KEYDOWN}, UINT{WM_KEYUP}, UINT{WM_LBUTTONUP},
                             UINT{WM_COMMAND}, UINT{WM_TIMER}, UINT{WM_SETTEXT}})
        SendMessageA(owner.handle(), other, 0, 0);
    owner.pump();
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(HintWindowTest, InputOfItsOwnersChildrenClosesIt) {
    Owner owner;
    Owner stranger({700, 500, 800, 600});
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

TEST_F(HintWindowTest, TheMouseLeavingItsOwnerClosesIt) {
    Owner owner;
    const HWND window = shown(owner);
    owner.pumpUntilMouseIsChecked();
    ASSERT_TRUE(IsWindow(window)) << "the mouse is still there";
    SetCursorPos(100, 100);
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
    EXPECT_NE(std::ranges::find(owner.seen, UINT{WM_MOUSELEAVE}), owner.seen.end());
}

TEST_F(HintWindowTest, TheMouseOverAChildIsNotTakenForHavingLeft) {
    Owner owner;
    const HWND edit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 100, 100, 200, 100,
                                      owner.handle(), nullptr, nullptr, nullptr);
    ASSERT_EQ(WindowFromPoint({400, 300}), edit);
    const HWND window = shown(owner);
    owner.pumpUntilMouseIsChecked();
    ASSERT_TRUE(IsWindow(window));
    SetCursorPos(100, 100);
    EXPECT_TRUE(owner.pumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(HintWindowTest, LetsTheMouseThroughToItsOwner) {
    Owner owner;
    const HWND window = shown(owner);
    EXPECT_EQ(SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(400, 330)), HTTRANSPARENT);
    EXPECT_EQ(WindowFromPoint({400, 330}), owner.handle());
    EXPECT_TRUE(IsWindow(window));
}

TEST_F(HintWindowTest, WithoutAnOwnerItClosesOnItsOwnInput) {
    SetCursorPos(900, 700); // no owner, no rectangle for the pointer to be in
    Owner pumping({0, 0, 50, 50});
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

// Lives and deaths

TEST_F(HintWindowTest, DiesWithItsOwnersWindow) {
    Owner owner;
    Owner other({0, 0, 50, 50});
    const HWND window = shown(owner);
    DestroyWindow(owner.handle());
    EXPECT_FALSE(IsWindow(window));
    other.pump();
    SetCursorPos(10, 10);
    EXPECT_TRUE(HintWindow::show(&other, hintAt({10, 10})));
}

TEST_F(HintWindowTest, DiesWithItsOwner) {
    Owner other({0, 0, 50, 50});
    HWND window = nullptr;
    {
        Owner owner;
        window = shown(owner);
    }
    EXPECT_FALSE(IsWindow(window));
    other.pump();
}

TEST_F(HintWindowTest, DiesWithAnOwnerThatIsAChild) {
    Owner frame;
    auto child = std::make_unique<Owner>(RECT{50, 50, 350, 250}, frame.handle());
    HWND window = shown(*child);
    child.reset();
    EXPECT_TRUE(frame.pumpUntil([&] { return !IsWindow(window); }))
        << "the child's object took its window along";

    child = std::make_unique<Owner>(RECT{50, 50, 350, 250}, frame.handle());
    window = shown(*child);
    DestroyWindow(child->handle());
    EXPECT_TRUE(frame.pumpUntil([&] { return !IsWindow(window); }));
}

TEST_F(HintWindowTest, DiesWhenItsOwnersObjectLetsGoOfTheWindow) {
    Owner frame;
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

TEST_F(HintWindowTest, DestroyedByOthersItLeavesItsOwnerInPeace) {
    Owner owner;
    for (int i = 0; i < 3; ++i) {
        DestroyWindow(shown(owner));
        SendMessageA(owner.handle(), WM_CHAR, 'x', 0);
        MSG message{};
        EXPECT_FALSE(PeekMessageA(&message, reinterpret_cast<HWND>(-1), 0, 0, PM_REMOVE)) << "for the thread";
        owner.pump();
    }
}

TEST_F(HintWindowTest, MayBeClosedInsideItsOwnersHandlerForTheInputThatClosesIt) {
    Owner owner;
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

/// How many objects `count` calls leave behind, after one that makes what is made once.
int objectsLeftBy(const std::function<void()>& act, int count) {
    act();
    const unsigned before = test::gdiObjectCount();
    for (int i = 0; i < count; ++i)
        act();
    return static_cast<int>(test::gdiObjectCount() - before);
}

TEST_F(HintWindowTest, PaintingLeavesNoObjectsBehind) {
    Owner owner;
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

TEST_F(HintWindowTest, AWholeLifeLeavesNoObjectsBehind) {
    Owner owner;
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
