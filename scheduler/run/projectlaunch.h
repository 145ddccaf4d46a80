#pragma once

#include "scheduler/model/scheduledproject.h"
#include "scheduler/run/usermessages.h"

#include <string>

namespace scheduler {

/// composeCommandLine with the registered association. Starting the line fails if there is none.
std::string buildCommandLine(const ScheduledProject& entry);

/// Whether the program exists. `commandPath` can have wildcards and surrounding white space.
[[nodiscard]] bool spiderExists(const std::string& commandPath);

/// Opens the project for the user. True if a process was started or the user was told that the spider is
/// missing. A command line or another type of file is ignored and returns false.
[[nodiscard]] bool openProject(const std::string& path, UserMessages& messages);

} // namespace scheduler
