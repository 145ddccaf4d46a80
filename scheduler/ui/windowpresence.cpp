#include "scheduler/ui/windowpresence.h"

#include "scheduler/ui/framework/placement.h"

namespace scheduler {

void WindowPresence::show() {
    ShowWindow(window(), SW_RESTORE);
    UpdateWindow(window());
    list_.refresh();
    SetForegroundWindow(window());
}

void WindowPresence::bringForwardIfShown() {
    if (IsWindowVisible(window()))
        SetForegroundWindow(window());
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
