#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The folder of the program that a command line starts, with a trailing backslash; empty if not given.
std::string workingDirectoryOf(std::string_view commandLine);

} // namespace scheduler
