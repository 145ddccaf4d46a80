#include "scheduler/ui/helpfile.h"

#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"

namespace scheduler {

void showHelp(HWND window) {
    const std::string file = base::directoryOf(base::executablePath()) + "scheduler.hlp";
    WinHelpA(window, file.c_str(), HELP_KEY, reinterpret_cast<ULONG_PTR>(base::applicationName.c_str()));
}

} // namespace scheduler
