#pragma once

#include <string>
#include <string_view>

namespace scheduler {

/// The program's folder in a command line, with a trailing separator; empty if there is none.
std::string workingDirectoryOf(std::string_view commandLine);

} // namespace scheduler
