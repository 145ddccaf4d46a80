#pragma once

#include <windows.h>

namespace scheduler {

/// Opens a menu resource's first submenu at the pointer. `owner` receives the command. Ignores load errors.
void trackMenu(HWND owner, UINT menuResource);

} // namespace scheduler
