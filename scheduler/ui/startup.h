// From the entry point to the message loop.
#pragma once

#include <string>

namespace scheduler {

/// Runs the program with the text behind its name on the command line and the system's show command: tells a
/// running copy to close or to show itself, or becomes the running copy. Returns the process's exit code: 1,
/// and a message, when the window could not be made, its timer be set or memory be had for what it shows.
int runProgram(const std::string& commandLine, int showCommand);

} // namespace scheduler
