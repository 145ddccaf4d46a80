#include "scheduler/ui/windowpresence.h"

#include "scheduler/ui/framework/placement.h"

namespace scheduler {

namespace {

/// What the user can work with: while a dialog is open over it, a window itself is disabled.
HWND foremostOf(HWND window) {
    const HWND popup = GetLastActivePopup(window);
    return popup && IsWindowVisible(popup) && IsWindowEnabled(popup) ? popup : window;
}

} // namespace

void WindowPresence::show() {
    ShowWindow(window(), SW_RESTORE);
    UpdateWindow(window());
    SetForegroundWindow(foremostOf(window()));
}

void WindowPresence::bringForwardIfShown() {
    if (IsWindowVisible(window()))
        SetForegroundWindow(foremostOf(window()));
}

void WindowPresence::hide() {
    rememberPlace();
    ShowWindow(window(), SW_HIDE);
    UpdateWindow(window());
}

void WindowPresence::rememberPlace() {
    // A window that was not shown has no new place, and has not taken on a saved maximised form.
    if (IsWindowVisible(window()))
        preferences_.windowState = framework::capturePlacement(window());
}

} // namespace scheduler
