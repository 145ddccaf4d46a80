#include "scheduler/ui/windowpresence.h"

#include "scheduler/ui/framework/placement.h"

namespace scheduler {

namespace {

/// A dialog open over the window, which disables it, or the window itself.
HWND activePopupOf(HWND window) {
    const HWND popup = GetLastActivePopup(window);
    return popup && IsWindowVisible(popup) && IsWindowEnabled(popup) ? popup : window;
}

} // namespace

void WindowPresence::show() {
    ShowWindow(window(), SW_RESTORE);
    UpdateWindow(window());
    SetForegroundWindow(activePopupOf(window()));
}

void WindowPresence::bringForwardIfShown() {
    if (IsWindowVisible(window()))
        SetForegroundWindow(activePopupOf(window()));
}

void WindowPresence::hide() {
    storePlacement();
    ShowWindow(window(), SW_HIDE);
    UpdateWindow(window());
}

void WindowPresence::storePlacement() {
    // A hidden window was stored when it was hidden, or has not yet applied a saved maximised state.
    if (IsWindowVisible(window()))
        preferences_.windowState = framework::capturePlacement(window());
}

} // namespace scheduler
