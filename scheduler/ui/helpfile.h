#pragma once

#include <windows.h>

namespace scheduler {

/// Opens `scheduler.hlp` or, if it is missing, `manual.html`. Both are in the program's folder.
void showHelp(HWND window);

} // namespace scheduler
