// The user's fonts, sized for the system's resolution.
#pragma once

#include <windows.h>

namespace framework {

/// The font of message boxes and lists. Made once and kept.
HFONT messageFont();

/// The font of tool tips. Made once and kept.
HFONT hintFont();

} // namespace framework
