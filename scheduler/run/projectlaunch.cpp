#include "scheduler/run/projectlaunch.h"

#include "lib/base/files.h"
#include "lib/base/filetypes.h"
#include "lib/base/formatting.h"
#include "lib/base/processes.h"
#include "lib/base/strings.h"
#include "scheduler/run/commandline.h"
#include "scheduler/run/edition.h"

#include <windows.h>

namespace scheduler {

namespace {

constexpr const char* spiderMissingText =
    "Cannot find %s!  %s must be installed on this computer in order to open or run this project.";

std::string associationOf(const std::string& path) {
    return base::associatedCommand(path, "open");
}

} // namespace

std::string buildCommandLine(const ScheduledProject& entry) {
    return composeCommandLine(entry, isCommandLine(entry) ? std::string() : associationOf(entry.path));
}

bool spiderExists(const std::string& commandPath) {
    const std::string path = base::trim(commandPath, base::whitespace);
    return path.find_first_of("*?") != std::string::npos ? base::anyFileMatches(path)
                                                         : base::fileExists(path);
}

bool openProject(const std::string& path, UserMessages& messages) {
    if (isCommandLine(path) || editionOf(path) == 0)
        return false;

    // The association's arguments are for scheduled runs only.
    const std::string program = splitAssociation(associationOf(path)).program;
    if (spiderExists(program))
        return base::startProcess('"' + program + "\" \"" + path + '"', SW_SHOW, {});

    const std::string edition = editionName(path);
    messages.showError(base::format(spiderMissingText, edition, edition));
    return true;
}

} // namespace scheduler
