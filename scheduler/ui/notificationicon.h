// The program's icon in the notification area.
#pragma once

#include "scheduler/ui/windowpresence.h"

#include <windows.h>

#include <string>

namespace scheduler {

/// Shows by icon and tip whether the scheduler is active or suspended. Failures of the shell are left alone:
/// the program works without its icon. It is removed with its object at the latest.
class [[nodiscard]] NotificationIcon {
public:
    NotificationIcon() = default;
    NotificationIcon(const NotificationIcon&) = delete;
    NotificationIcon& operator=(const NotificationIcon&) = delete;
    ~NotificationIcon();

    /// The window that the icon stands for and reports to.
    void add(HWND window);
    void update(bool suspended);
    /// The shell has lost all icons.
    void restore(bool suspended);
    void remove();

    /// Warns in a balloon. Without an icon nothing is shown.
    void warn(const std::string& text) const;

    /// A mouse message over the icon: shows the window, brings it forward or opens the icon's menu.
    static void onMouse(UINT mouseMessage, WindowPresence& presence);

private:
    HWND window_ = nullptr;
    bool stands_ = false; // whatever the shell said
};

} // namespace scheduler
