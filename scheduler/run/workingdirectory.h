#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The folder of the program that a command line starts, with a trailing backslash; empty if it names none.
std::string workingDirectoryOf(std::string_view commandLine);

} // namespace scheduler
