#pragma once

#include <windows.h>

namespace scheduler {

/// Opens `scheduler.hlp` beside the program in WinHelp or, without that file, `manual.html` in the browser.
void showHelp(HWND window);

} // namespace scheduler
