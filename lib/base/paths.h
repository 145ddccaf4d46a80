// Parts of a path. The separator is the backslash or, in a path without one, the slash.
#pragma once

#include <string>
#include <string_view>

namespace base {

/// After the last separator; the whole path if there is none.
std::string fileNameOf(std::string_view path);

/// Up to and including the last separator; empty if there is none.
std::string directoryOf(std::string_view path);

/// After the file name's last dot, in lower case; empty if there is none.
std::string extensionOf(std::string_view path);

std::string baseNameOf(std::string_view path);

/// Whether the path begins with a letter, a colon and a backslash.
[[nodiscard]] bool isDrivePath(std::string_view path);

} // namespace base
