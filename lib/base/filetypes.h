#pragma once

#include <string>

namespace base {

/// The registered file type for the file's extension; empty if there is none.
std::string fileTypeOf(const std::string& fileName);

/// The registered command for `verb` ("open"), without the placeholders %1 to %9 and their quotes: a program
/// path, usually quoted, and any fixed arguments. Empty if none is registered.
std::string associatedCommand(const std::string& fileName, const std::string& verb);

} // namespace base
