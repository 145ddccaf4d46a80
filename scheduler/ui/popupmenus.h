// Menus that open at the pointer.
#pragma once

#include <windows.h>

namespace scheduler {

/// Opens the first submenu of a menu resource at the pointer. The chosen command is sent to `owner`. Nothing
/// happens when the menu cannot be loaded.
void trackMenu(HWND owner, UINT menuResource);

} // namespace scheduler
