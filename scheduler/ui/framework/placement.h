#pragma once

#include "lib/base/windowstate.h"

#include <windows.h>

namespace framework {

/// The window's placement: the platform's WINDOWPLACEMENT (44 bytes), then 17 reserved zero bytes.
base::WindowState capturePlacement(HWND window);

/// Moves the window without showing it. False, with no change, if the saved placement is invalid or outside
/// every work area. If the saved window was maximised, replaces a normal `showCommand` with SW_SHOWMAXIMIZED.
[[nodiscard]] bool applyPlacement(HWND window, const base::WindowState& bytes, int& showCommand);

} // namespace framework
