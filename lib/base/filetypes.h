// What the system has registered for a file's type, by its extension.
#pragma once

#include <string>

namespace base {

/// The name of the file type that the system has for the file's extension; empty when there is none.
std::string fileTypeOf(const std::string& fileName);

/// What the system runs for `verb` ("open") on files of this type, without the placeholders %1 to %9 and the
/// quotes around them: a program path, usually quoted, with any fixed arguments. Empty when nothing is
/// registered.
std::string associatedCommand(const std::string& fileName, const std::string& verb);

} // namespace base
