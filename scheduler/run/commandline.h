// The spider's command line for one run of an entry.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <string>
#include <string_view>

namespace scheduler {

/// What the system's association of a file type says, taken apart.
struct SpiderCommand {
    std::string program;   ///< path without quotes; may be empty
    std::string arguments; ///< fixed arguments with the blank before them; usually empty
};

/// A text that begins with a quote holds the program up to its closing quote and fixed arguments behind it;
/// any other text is the program's path as a whole.
SpiderCommand splitAssociation(std::string_view association);

/// The command line of a run, `association` being what the system runs for the project's file type:
/// - an entry with a command line of its own: that line, unchanged;
/// - else the quoted program, " /s" and the run number, and the run command's switch;
/// - then, unless files are relinked: the quoted /a switch of the dial-up entry, " /d", and " /t" with the
///   time limit, each if it is set, and always " /e";
/// - then the quoted project path.
std::string composeCommandLine(const ScheduledProject& entry, std::string_view association);

} // namespace scheduler
