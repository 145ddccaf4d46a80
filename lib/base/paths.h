// The parts of a path. The separator is the backslash or, in a path that holds none, the slash.
#pragma once

#include <string>
#include <string_view>

namespace base {

/// The text after the last separator; the whole path when there is none.
std::string fileNameOf(std::string_view path);

/// The text up to and including the last separator; empty when there is none.
std::string directoryOf(std::string_view path);

/// The text after the file name's last point, in lower case; empty when the name has no point.
std::string extensionOf(std::string_view path);

/// The file name without its last point and what follows it.
std::string baseNameOf(std::string_view path);

/// Whether the path begins with a letter, a colon and a backslash.
[[nodiscard]] bool isDrivePath(std::string_view path);

} // namespace base
