#pragma once

#include "scheduler/model/scheduledproject.h"
#include "scheduler/run/usermessages.h"

#include <string>

namespace scheduler {

/// composeCommandLine with the registered command. If a project has none, starting its line fails.
std::string buildCommandLine(const ScheduledProject& entry);

/// Whether the program exists. `commandPath` can have wildcards and surrounding white space.
[[nodiscard]] bool spiderExists(const std::string& commandPath);

/// Opens a project file in its spider. True if a process was started or the user was told that the spider is
/// missing. False if starting failed or `path` is not a project file.
[[nodiscard]] bool openProject(const std::string& path, UserMessages& messages);

} // namespace scheduler
