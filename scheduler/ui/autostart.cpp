#include "scheduler/ui/autostart.h"

#include "lib/base/base.h"
#include "lib/base/formatting.h"
#include "lib/base/opsys.h"
#include "lib/base/registry.h"

namespace scheduler {

void applyAutostart(bool wanted) {
    const std::string path = "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\" + base::applicationName;
    if (wanted)
        static_cast<void>(
            base::writeString(HKEY_LOCAL_MACHINE, path, base::format("\"%s\" /s", base::executablePath())));
    else
        static_cast<void>(base::deleteValue(HKEY_LOCAL_MACHINE, path));
}

} // namespace scheduler
