// The menus that open at the mouse.
#pragma once

#include "scheduler/ui/windowpresence.h"

#include <windows.h>

namespace scheduler {

/// Opens the first submenu of a menu resource at the pointer. What is chosen is sent to `owner` as a command.
void trackMenu(HWND owner, UINT menuResource);

/// What the mouse does on the notification icon: shows the window, brings it forward or opens the icon's
/// menu.
void onIconMouse(UINT mouseMessage, WindowPresence& presence);

} // namespace scheduler
