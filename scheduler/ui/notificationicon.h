#pragma once

#include "scheduler/ui/windowpresence.h"

#include <windows.h>

#include <string>

namespace scheduler {

/// The icon in the notification area. Shell errors are ignored. The destructor removes the icon.
class [[nodiscard]] NotificationIcon {
public:
    NotificationIcon() = default;
    NotificationIcon(const NotificationIcon&) = delete;
    NotificationIcon& operator=(const NotificationIcon&) = delete;
    ~NotificationIcon();

    /// `window` receives the icon's messages.
    void add(HWND window);
    void update(bool suspended);
    /// Adds the icon again after the shell has lost all icons.
    void restore(bool suspended);
    void remove();

    /// Shows a balloon if the icon was added.
    void warn(const std::string& text) const;

    /// Handles the icon's mouse message: shows the window, brings it forward or opens the icon's menu.
    static void onMouse(UINT mouseMessage, WindowPresence& presence);

private:
    HWND window_ = nullptr;
    bool added_ = false; // set even if the shell refused the icon
};

} // namespace scheduler
