#include "scheduler/ui/helpfile.h"

#include "lib/base/base.h"
#include "lib/base/files.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"

#include <shellapi.h>

namespace scheduler {

void showHelp(HWND window) {
    const std::string folder = base::directoryOf(base::executablePath());
    const std::string file = folder + "scheduler.hlp";
    const std::string manual = folder + "manual.html";
    if (!base::fileExists(file) && base::fileExists(manual)) {
        ShellExecuteA(window, "open", manual.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
        return;
    }
    // If both files are missing, WinHelp tells the user.
    WinHelpA(window, file.c_str(), HELP_KEY, reinterpret_cast<ULONG_PTR>(base::applicationName.c_str()));
}

} // namespace scheduler
