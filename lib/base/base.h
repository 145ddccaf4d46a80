#pragma once

#include <string>

namespace base {

/// Part of the instance mutex's name and of registry and file paths.
extern const std::string vendorName;

/// The program's title, also part of the mutex's name and of the history's path. Set it before any use.
extern std::string applicationName;

} // namespace base
