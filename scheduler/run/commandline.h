#pragma once

#include "scheduler/model/scheduledproject.h"

#include <string>
#include <string_view>

namespace scheduler {

struct SpiderCommand {
    std::string program;   ///< path without quotes; may be empty
    std::string arguments; ///< with the space before them; usually empty
};

/// Splits after the closing quote. Text without a quote at its start is the program's path as a whole.
SpiderCommand splitAssociation(std::string_view association);

/// The command line of a run; `association` is the registered command for the project's file type.
/// - A command-line entry: its own line, unchanged.
/// - Others: the quoted program, its arguments, " /s" with the run number and the run command's switch. Then,
/// unless files are relinked, the quoted /a switch with the dial-up entry, " /d", " /t" with the time limit
/// (each of these if set) and always " /e". Last, the quoted project path.
std::string composeCommandLine(const ScheduledProject& entry, std::string_view association);

} // namespace scheduler
