#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/ui/framework/window.h"

namespace scheduler {

/// Shows and hides the main window. The arguments must outlive this object.
class WindowPresence {
public:
    WindowPresence(const framework::Window& window, Preferences& preferences)
        : window_(window), preferences_(preferences) {}

    HWND window() const { return window_.handle(); }

    /// Shows or restores the window in front of all others. A dialog open over it is activated instead.
    void show();

    void bringForwardIfShown();

    void hide();

    /// Stores the window's placement in the preferences if the window is visible.
    void storePlacement();

private:
    const framework::Window& window_;
    Preferences& preferences_;
};

} // namespace scheduler
