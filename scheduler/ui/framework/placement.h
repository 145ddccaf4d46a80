// A window's saved place: where it stands, how large it is, whether it is maximised.
#pragma once

#include "lib/base/windowstate.h"

#include <windows.h>

namespace framework {

/// The saved form is the platform's WINDOWPLACEMENT (44 bytes), then 17 zero bytes kept for later.
base::WindowState capturePlacement(HWND window);

/// Puts the window where `bytes` say, without showing it. False, with nothing changed, when they hold no
/// placement or one that lies outside every monitor's work area. Returns through `showCommand`, when it asks
/// for the window's normal form, that it was maximised.
[[nodiscard]] bool applyPlacement(HWND window, const base::WindowState& bytes, int& showCommand);

} // namespace framework
