#pragma once

#include "scheduler/model/scheduledproject.h"

#include <string>
#include <string_view>

namespace scheduler {

struct SpiderCommand {
    std::string program;   ///< path without quotes; may be empty
    std::string arguments; ///< all text after the closing quote; usually empty
};

/// Splits at the closing quote. If the text does not begin with a quoted path, all of it is the
/// program's path.
SpiderCommand splitAssociation(std::string_view association);

/// The command line of a run. For a command-line entry, its own line; for a project,
///     "program" arguments /s<run number> /<r, u, l or c> "/a<dial-up entry>" /d /t<minutes> /e "path"
/// `association`, the file type's registered command, provides the program and arguments. /a, /d and /t
/// appear only if set. With /l (relink), none of /a, /d, /t and /e appears.
std::string composeCommandLine(const ScheduledProject& entry, std::string_view association);

} // namespace scheduler
