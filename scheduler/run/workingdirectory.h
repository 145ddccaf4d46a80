#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The folder, with its separator, of the program that starts a command line; empty if it names none.
std::string workingDirectoryOf(std::string_view commandLine);

} // namespace scheduler
