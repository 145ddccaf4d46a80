#pragma once

#include <string>

namespace scheduler {

/// Runs the program, or tells a running copy to close or to show its window. `commandLine` is the text after
/// the program's name. Returns the exit code: 1, after a message, if the main window cannot start.
int runProgram(const std::string& commandLine, int showCommand);

} // namespace scheduler
