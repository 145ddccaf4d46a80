// What the tests of the hint window have in common.
#pragma once

#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/hintwindow.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace test {

/// A window whose hints the tests show. It runs the program's own loop.
class HintOwner : public framework::Window {
public:
    std::vector<UINT> seen;

    explicit HintOwner(RECT place = {200, 150, 600, 450}, HWND parent = nullptr) {
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
    framework::Handled onMessage(const framework::Message& message) override {
        seen.push_back(message.id);
        if (message.id == WM_TIMER && message.wParam == stopTimer)
            endModal(1);
        return std::nullopt;
    }
    /// Runs the loop for a moment. A timer ends it, as timers wait for everything else.
    void pump(UINT milliseconds = 20) {
        beginModal();
        SetTimer(handle(), stopTimer, milliseconds, nullptr);
        framework::MessagePump::instance().runModalLoop(*this);
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
        while (!condition() && GetTickCount() - start < patience)
            pump();
        return condition();
    }

private:
    static constexpr UINT_PTR stopTimer = 99;
};

CALLED_BY_PLATFORM inline BOOL CALLBACK collectHint(HWND window, LPARAM list) {
    if (dynamic_cast<framework::HintWindow*>(framework::Window::of(window)) && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// The hint windows of this thread.
inline std::vector<HWND> hints() {
    std::vector<HWND> found;
    EnumThreadWindows(GetCurrentThreadId(), &collectHint, reinterpret_cast<LPARAM>(&found));
    return found;
}

inline framework::Hint hintAt(POINT point, const char* text = "A hint") {
    framework::Hint hint;
    hint.text = text;
    hint.point = point;
    hint.displayMilliseconds = 2 * patience; // so that it is not its time that closes it
    return hint;
}

/// No hint is left behind, and the mouse begins inside the owner.
class HintWindowTest : public ::testing::Test {
protected:
    void SetUp() override { SetCursorPos(400, 300); }
    void TearDown() override {
        for (const HWND window : hints())
            SendMessageA(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(hints().empty());
    }

    HWND shown(framework::Window& owner, const framework::Hint& hint = hintAt({400, 300})) {
        EXPECT_TRUE(framework::HintWindow::show(&owner, hint));
        const std::vector<HWND> windows = hints();
        EXPECT_EQ(windows.size(), 1U);
        return windows.empty() ? nullptr : windows.front();
    }
};

} // namespace test
