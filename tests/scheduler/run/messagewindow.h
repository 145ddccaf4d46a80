// A window that receives the ends of runs.
#pragma once

#include "scheduler/run/worker.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <map>

namespace test {

class MessageWindow {
public:
    MessageWindow()
        : window_(CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr)) {}
    ~MessageWindow() { DestroyWindow(window_); }
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    HWND handle() const { return window_; }

    /// Waits for so many ends of runs: how often each number came.
    std::map<WPARAM, int> waitForEnds(std::size_t count) const {
        std::map<WPARAM, int> ends;
        const ULONGLONG last = GetTickCount64() + patience;
        for (std::size_t seen = 0; seen < count && GetTickCount64() < last;) {
            MSG message{};
            if (!PeekMessageA(&message, window_, scheduler::WM_RUN_FINISHED, scheduler::WM_RUN_FINISHED,
                              PM_REMOVE)) {
                MsgWaitForMultipleObjects(0, nullptr, FALSE, 1000, QS_ALLPOSTMESSAGE);
                continue;
            }
            EXPECT_EQ(message.lParam, 0);
            ++ends[message.wParam];
            ++seen;
        }
        return ends;
    }

    bool hasMore() const {
        MSG message{};
        return PeekMessageA(&message, window_, scheduler::WM_RUN_FINISHED, scheduler::WM_RUN_FINISHED,
                            PM_NOREMOVE) != FALSE;
    }

private:
    HWND window_;
};

} // namespace test
