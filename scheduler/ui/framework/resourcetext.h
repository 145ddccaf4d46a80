// The texts that the program's string table keeps by number.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// The text with this number in whole; empty when there is none. A command's description has the command's
/// number.
std::string resourceText(UINT id);

} // namespace framework
