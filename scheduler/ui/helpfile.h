// The program's help.
#pragma once

#include <windows.h>

namespace scheduler {

/// Opens `scheduler.hlp` beside the program with WinHelp, at the keyword of the program's title. If there is
/// no such file, but a `manual.html`, opens that in the browser.
void showHelp(HWND window);

} // namespace scheduler
