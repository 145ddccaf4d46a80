#pragma once

#include "lib/base/windowstate.h"

#include <windows.h>

namespace framework {

/// A window's saved placement: the platform's WINDOWPLACEMENT (44 bytes), then 17 reserved zero bytes.
base::WindowState capturePlacement(HWND window);

/// Moves the window without showing it. False, with no change, if `bytes` hold no placement or a placement
/// outside every work area. For a maximised window, replaces a normal `showCommand` by SW_SHOWMAXIMIZED.
[[nodiscard]] bool applyPlacement(HWND window, const base::WindowState& bytes, int& showCommand);

} // namespace framework
