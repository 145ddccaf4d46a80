#include "scheduler/ui/windowpresence.h"

#include "scheduler/ui/framework/placement.h"

namespace scheduler {

namespace {

/// The dialog open over the window or, if there is none, the window itself.
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
    // hide() has already stored its window's placement. Capturing a window that was never shown would lose a
    // saved maximised state.
    if (IsWindowVisible(window()))
        preferences_.windowState = framework::capturePlacement(window());
}

} // namespace scheduler
