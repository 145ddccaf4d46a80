// The spider that the system has for a project: its command line, and opening a project in it.
#pragma once

#include "scheduler/model/scheduledproject.h"
#include "scheduler/run/usermessages.h"

#include <string>

namespace scheduler {

/// composeCommandLine with the system's association of the project's file type. When there is none the line
/// is built around an empty program path; starting it fails.
std::string buildCommandLine(const ScheduledProject& entry);

/// Whether the program of a command path (with or without wildcards, white space around it ignored) is there.
[[nodiscard]] bool spiderExists(const std::string& commandPath);

/// Opens the project in its spider for the user. True when a process was started or the user was told that
/// the spider is missing; false, and nothing done, for a command line or a file of another type.
[[nodiscard]] bool openProject(const std::string& path, UserMessages& messages);

} // namespace scheduler
