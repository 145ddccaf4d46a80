#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// A text of the string table; empty if missing. A command's description has the command's id.
std::string resourceText(UINT id);

} // namespace framework
