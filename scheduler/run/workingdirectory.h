// Where a run's process works.
#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The folder, with its separator, of the program that a command line names first; empty when it names none.
std::string workingDirectoryOf(std::string_view commandLine);

} // namespace scheduler
