// The program's help.
#pragma once

#include <windows.h>

namespace scheduler {

/// Has the platform open the help file beside the program for `window`, at what it says about the scheduler.
void showHelp(HWND window);

} // namespace scheduler
