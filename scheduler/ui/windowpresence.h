// Showing and hiding the main window, which lives on unseen while only the notification icon is there.
#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/ui/framework/window.h"

namespace scheduler {

/// All outlive the presence.
class WindowPresence {
public:
    WindowPresence(const framework::Window& window, Preferences& preferences)
        : window_(window), preferences_(preferences) {}

    HWND window() const { return window_.handle(); }

    /// Shows the window, also one that is minimised, in front of all others; a dialog that is open over it
    /// gets the keyboard.
    void show();

    /// The same without showing it: a hidden window stays hidden.
    void bringForwardIfShown();

    void hide();

    /// Takes down where the window stands, for the preferences to be saved with.
    void rememberPlace();

private:
    const framework::Window& window_;
    Preferences& preferences_;
};

} // namespace scheduler
