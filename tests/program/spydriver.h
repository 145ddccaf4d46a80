#pragma once

#include "lib/base/handles.h"
#include "tests/program/spy/sharedstate.h"

#include <windows.h>

#include <vector>

namespace driver {

/// Loads the spy into a running scheduler and reads its state.
class SpyDriver {
public:
    explicit SpyDriver(HWND mainWindow);
    ~SpyDriver();
    SpyDriver(const SpyDriver&) = delete;
    SpyDriver& operator=(const SpyDriver&) = delete;

    bool isLoaded() const { return hooks_.size() == 2; }

    LONG ticks() const { return state_->ticks; }
    /// Timer messages have the lowest priority, so messages posted earlier are handled before this returns.
    bool passTicks(LONG count) const;

    // See spy::Request. The object counts are as of the last count().
    void count() const { perform(spy::Request::Count, mainWindow_); }
    DWORD userObjects() const { return state_->userObjects; }
    DWORD gdiObjects() const { return state_->gdiObjects; }
    void settleHeaps() const { perform(spy::Request::SettleHeaps, mainWindow_); }
    void freeTexts() const { perform(spy::Request::FreeTexts, mainWindow_); }
    LONG freedTexts() const { return state_->freedTexts; }
    void fillContexts() const { perform(spy::Request::FillContexts, mainWindow_); }
    static void draw(HWND window) { perform(spy::Request::Draw, window); }

private:
    static void perform(spy::Request request, HWND window);

    HWND mainWindow_;
    base::KernelHandle memory_;
    spy::SharedState* state_; // written by the scheduler's process
    std::vector<HHOOK> hooks_;
};

} // namespace driver
