#pragma once

#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/hintwindow.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/support/timeout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace test {

class HintOwner : public ProbeWindow {
public:
    std::vector<UINT> seen;

    explicit HintOwner(RECT place = {200, 150, 600, 450}, HWND parent = nullptr) {
        handler = [this](const framework::Message& message) -> framework::Handled {
            seen.push_back(message.id);
            return std::nullopt;
        };
        open(WS_VISIBLE | (parent ? WS_CHILD : WS_POPUP), place, parent);
    }
    bool hasSeen(UINT message) const { return std::ranges::find(seen, message) != seen.end(); }
};

inline bool pumpUntil(const std::function<bool()>& condition) {
    const DWORD start = GetTickCount();
    while (!condition() && GetTickCount() - start < timeout)
        pumpUntilIdle();
    return condition();
}

CALLED_BY_PLATFORM inline BOOL CALLBACK collectHint(HWND window, LPARAM list) {
    if (dynamic_cast<framework::HintWindow*>(framework::Window::of(window)) && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

inline std::vector<HWND> hints() {
    std::vector<HWND> found;
    EnumThreadWindows(GetCurrentThreadId(), &collectHint, reinterpret_cast<LPARAM>(&found));
    return found;
}

inline framework::Hint hintAt(POINT point, const char* text = "A hint") {
    framework::Hint hint;
    hint.text = text;
    hint.point = point;
    hint.displayMilliseconds = 2 * timeout; // never closed by its timer
    return hint;
}

/// Starts with the mouse inside the owner and closes all hints at the end.
class HintTest : public testing::Test {
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
