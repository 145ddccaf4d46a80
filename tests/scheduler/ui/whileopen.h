#pragma once

#include "lib/base/stackalignment.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace test {

/// Calls `act` once with this thread's next dialog. Must outlive the dialog. Only one may exist at a time.
class WhileOpen {
public:
    explicit WhileOpen(std::function<void(HWND dialog)> act) {
        act_ = std::move(act);
        timer_ = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &onTimer);
    }
    ~WhileOpen() {
        KillTimer(nullptr, timer_);
        EXPECT_FALSE(act_) << "no dialog was shown";
        act_ = nullptr;
    }
    WhileOpen(const WhileOpen&) = delete;
    WhileOpen& operator=(const WhileOpen&) = delete;

private:
    CALLED_BY_PLATFORM static void CALLBACK onTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
        HWND dialog = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), &findDialog, reinterpret_cast<LPARAM>(&dialog));
        if (dialog && act_)
            std::exchange(act_, nullptr)(dialog);
    }

    CALLED_BY_PLATFORM static BOOL CALLBACK findDialog(HWND window, LPARAM found) noexcept {
        constexpr WORD dialogClass = 32770; // class atom of the platform's dialogs
        if (GetClassWord(window, GCW_ATOM) != dialogClass || !IsWindowVisible(window))
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }

    static inline std::function<void(HWND)> act_;
    UINT_PTR timer_ = 0;
};

} // namespace test
