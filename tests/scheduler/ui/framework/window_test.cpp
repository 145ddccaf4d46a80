#include "scheduler/ui/framework/window.h"
#include "tests/scheduler/ui/framework/probewindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace {

using framework::Handled;
using framework::Message;
using framework::Window;
using test::createProbe;
using test::nested;
using test::probe;
using test::ProbeWindow;

TEST(Window, IsBoundFromItsFirstMessageOn) {
    ProbeWindow window;
    std::vector<UINT> seen;
    window.handler = [&](const Message& message) -> Handled {
        seen.push_back(message.id);
        EXPECT_NE(window.handle(), nullptr);
        return std::nullopt;
    };
    ASSERT_TRUE(createProbe(window));
    EXPECT_NE(std::ranges::find(seen, UINT{WM_NCCREATE}), seen.end());
    EXPECT_NE(std::ranges::find(seen, UINT{WM_CREATE}), seen.end());
    EXPECT_EQ(Window::of(window.handle()), &window);
    EXPECT_EQ(window.attachments, 1);
}

TEST(Window, IsUnboundWhenItsWindowDies) {
    ProbeWindow window;
    ASSERT_TRUE(createProbe(window));
    const HWND handle = window.handle();
    DestroyWindow(handle);
    EXPECT_EQ(window.handle(), nullptr);
    EXPECT_EQ(Window::of(handle), nullptr);
}

TEST(Window, ItsDeathDestroysTheWindowThatItCreated) {
    auto window = std::make_unique<ProbeWindow>();
    ASSERT_TRUE(createProbe(*window));
    const HWND handle = window->handle();
    window.reset();
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, ARefusedCreationLeavesNoHandle) {
    ProbeWindow window;
    window.handler = [](const Message& message) -> Handled {
        return message.id == WM_NCCREATE ? Handled(0) : std::nullopt;
    };
    EXPECT_FALSE(createProbe(window));
    EXPECT_EQ(window.handle(), nullptr);
    EXPECT_EQ(window.attachments, 0);
}

TEST(Window, AHandledMessageGivesTheHandlersResultAndAnyOtherTheDefault) {
    ProbeWindow window;
    window.handler = [](const Message& message) -> Handled {
        return message.id == probe ? Handled(static_cast<LRESULT>(message.wParam) + message.lParam)
                                   : std::nullopt;
    };
    ASSERT_TRUE(createProbe(window));
    EXPECT_EQ(SendMessageA(window.handle(), probe, 40, 2), 42);
    EXPECT_EQ(SendMessageA(window.handle(), nested, 40, 2), 0);
    SetWindowTextA(window.handle(), "by default");
    EXPECT_EQ(GetWindowTextLengthA(window.handle()), 10);
}

TEST(Window, ANestedMessageDoesNotDisturbTheOuterOne) {
    ProbeWindow window;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == nested)
            return 1;
        if (message.id != probe)
            return std::nullopt;
        const LRESULT inner = SendMessageA(window.handle(), nested, 7, 8);
        return static_cast<LRESULT>(message.wParam) * 10 + message.lParam + inner;
    };
    ASSERT_TRUE(createProbe(window));
    EXPECT_EQ(SendMessageA(window.handle(), probe, 4, 2), 43);
}

TEST(Window, AnObjectMayBeDestroyedInsideItsOwnHandler) {
    auto window = std::make_unique<ProbeWindow>();
    window->handler = [&](const Message& message) -> Handled {
        if (message.id != probe)
            return std::nullopt;
        const auto doomed = std::move(window); // with it, this function's captures are gone
        return std::nullopt;
    };
    ASSERT_TRUE(createProbe(*window));
    const HWND handle = window->handle();
    EXPECT_EQ(SendMessageA(handle, probe, 0, 0), 0);
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, AnObjectMayBeDestroyedInsideANestedHandler) {
    auto window = std::make_unique<ProbeWindow>();
    window->handler = [&window](const Message& message) -> Handled {
        if (message.id == probe) {
            const HWND handle = window->handle();
            SendMessageA(handle, nested, 0, 0);
        } else if (message.id == nested) {
            const auto doomed = std::move(window);
        }
        return std::nullopt;
    };
    ASSERT_TRUE(createProbe(*window));
    const HWND handle = window->handle();
    SendMessageA(handle, probe, 0, 0);
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, AnExceptionInAHandlerEndsThereAndTheMessageGoesItsDefaultWay) {
    ProbeWindow window;
    ASSERT_TRUE(createProbe(window));
    window.handler = [](const Message& message) -> Handled {
        if (message.id == WM_SETTEXT)
            throw std::runtime_error("refused");
        return std::nullopt;
    };
    SetWindowTextA(window.handle(), "set all the same");
    EXPECT_EQ(GetWindowTextLengthA(window.handle()), 16);
}

TEST(Window, IsUnboundAlsoWhenItsLastHandlerThrows) {
    ProbeWindow window;
    ASSERT_TRUE(createProbe(window));
    window.handler = [](const Message& message) -> Handled {
        if (message.id == WM_NCDESTROY)
            throw std::runtime_error("refused");
        return std::nullopt;
    };
    DestroyWindow(window.handle());
    EXPECT_EQ(window.handle(), nullptr);
}

TEST(Window, ACloseWhoseHandlerThrowsDestroysNothing) {
    ProbeWindow window;
    ASSERT_TRUE(createProbe(window));
    window.handler = [](const Message& message) -> Handled {
        if (message.id == WM_CLOSE)
            throw std::runtime_error("refused");
        return std::nullopt;
    };
    SendMessageA(window.handle(), WM_CLOSE, 0, 0);
    EXPECT_NE(window.handle(), nullptr);
}

TEST(WindowAttach, BindsToAControlAndLetsGoOfIt) {
    const HWND edit =
        CreateWindowExA(0, "EDIT", "text", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(Window::of(edit), nullptr) << "a window of another class is never mistaken for ours";
    {
        ProbeWindow window;
        ASSERT_TRUE(window.attach(edit));
        EXPECT_EQ(Window::of(edit), &window);
        EXPECT_EQ(window.attachments, 1);
        ProbeWindow other;
        EXPECT_FALSE(other.attach(edit)) << "it has an object already";
        window.handler = [](const Message& message) -> Handled {
            return message.id == probe ? Handled(9) : std::nullopt;
        };
        EXPECT_EQ(SendMessageA(edit, probe, 0, 0), 9);
        EXPECT_EQ(SendMessageA(edit, WM_GETTEXTLENGTH, 0, 0), 4) << "the control works on";
    }
    ASSERT_TRUE(IsWindow(edit)) << "it was only attached to";
    EXPECT_EQ(Window::of(edit), nullptr);
    EXPECT_EQ(SendMessageA(edit, probe, 0, 0), 0);
    EXPECT_EQ(SendMessageA(edit, WM_GETTEXTLENGTH, 0, 0), 4);
    DestroyWindow(edit);
}

TEST(WindowAttach, UserDataOfAForeignWindowIsNotTakenForAnObject) {
    const HWND edit =
        CreateWindowExA(0, "EDIT", "", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongA(edit, GWL_USERDATA, 0x1234);
    EXPECT_EQ(Window::of(edit), nullptr);
    ProbeWindow window;
    EXPECT_FALSE(window.attach(edit));
    DestroyWindow(edit);
}

TEST(CentreWindow, OverTheDesktopOrTheParent) {
    ProbeWindow parent;
    ASSERT_TRUE(createProbe(parent));
    SetWindowPos(parent.handle(), nullptr, 100, 50, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    const HWND child =
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 101, 60, parent.handle(), nullptr, nullptr, nullptr);
    framework::centreWindow(child);
    RECT place{};
    GetWindowRect(child, &place);
    EXPECT_EQ(place.left, 300 - 50);
    EXPECT_EQ(place.top, 200 - 30);
    EXPECT_EQ(place.right - place.left, 101);

    framework::centreWindow(parent.handle());
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    GetWindowRect(parent.handle(), &place);
    EXPECT_EQ(place.left, desktop.right / 2 - 200);
    EXPECT_EQ(place.top, desktop.bottom / 2 - 150);
}

} // namespace
