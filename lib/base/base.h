#pragma once

#include <string>

namespace base {

/// The vendor's name, for the instance mutex's name and registry paths.
extern const std::string vendorName;

/// The program's title: window title, icon tip, message box caption, autostart value name, part of the
/// instance mutex's name. The entry point sets it before anything else.
extern std::string applicationName;

} // namespace base
