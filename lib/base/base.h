// The names that the whole program shares: its maker's and its own.
#pragma once

#include <string>

namespace base {

/// The maker's key word: first half of the instance mutex's name and part of the registry paths.
extern const std::string vendorName;

/// The program's title, which the entry point sets before anything else: window title, tip of the icon,
/// caption of message boxes, name of the autostart value, second half of the instance mutex's name.
extern std::string applicationName;

} // namespace base
