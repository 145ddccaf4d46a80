#include "scheduler/ui/commandswitches.h"

#include "lib/base/strings.h"

namespace scheduler {

bool asksToClose(std::string_view commandLine) {
    return base::startsWithNoCase(commandLine, "/close");
}

bool asksForHiddenStart(std::string_view commandLine) {
    return base::startsWithNoCase(base::trim(commandLine, base::whitespace), "/s");
}

} // namespace scheduler
