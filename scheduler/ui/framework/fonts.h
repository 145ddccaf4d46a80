// The user's fonts at the system's DPI, created once and never freed.
#pragma once

#include <windows.h>

namespace framework {

/// The platform's font for message boxes, used for lists.
HFONT messageFont();
HFONT hintFont();

} // namespace framework
