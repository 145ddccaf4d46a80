#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The folder of the program at the start of a command line, with a trailing backslash; empty without one.
std::string workingDirectoryOf(std::string_view commandLine);

} // namespace scheduler
