// The user's fonts at the system's DPI, created once and never freed.
#pragma once

#include <windows.h>

namespace framework {

/// For message boxes and lists.
HFONT messageFont();
HFONT hintFont();

} // namespace framework
