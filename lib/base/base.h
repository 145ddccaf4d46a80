#pragma once

#include <string>

namespace base {

/// The vendor's name, for the instance mutex's name and registry paths.
extern const std::string vendorName;

/// The program's title, also used for the icon, autostart and the mutex. The entry point sets it first.
extern std::string applicationName;

} // namespace base
