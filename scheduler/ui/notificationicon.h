#pragma once

#include "scheduler/ui/windowpresence.h"

#include <windows.h>

#include <string>

namespace scheduler {

/// The icon in the notification area. Errors of the shell are ignored. The destructor removes the icon.
class [[nodiscard]] NotificationIcon {
public:
    NotificationIcon() = default;
    NotificationIcon(const NotificationIcon&) = delete;
    NotificationIcon& operator=(const NotificationIcon&) = delete;
    ~NotificationIcon();

    /// `window` receives the icon's messages.
    void add(HWND window);
    void update(bool suspended);
    /// Call when the shell has lost all icons.
    void restore(bool suspended);
    void remove();

    /// Shows a balloon. Does nothing without an icon.
    void warn(const std::string& text) const;

    /// A mouse message over the icon: shows the window, brings it forward or opens the icon's menu.
    static void onMouse(UINT mouseMessage, WindowPresence& presence);

private:
    HWND window_ = nullptr;
    bool added_ = false; // even if the shell refused
};

} // namespace scheduler
