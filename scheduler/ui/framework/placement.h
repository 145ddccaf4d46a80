// A window's saved place: where it stands, how large it is, whether it is maximised.
#pragma once

#include <windows.h>

#include <array>
#include <cstddef>

namespace framework {

/// The saved form: the platform's WINDOWPLACEMENT (44 bytes), then 17 zero bytes kept for later.
using PlacementBytes = std::array<std::byte, 61>;

PlacementBytes capturePlacement(HWND window);

/// Puts the window where `bytes` say, without showing it. False, with nothing changed, when they hold no
/// placement or one that lies outside every monitor's work area. Returns through `showCommand`, when it asks
/// for the window's normal form, that it was maximised.
bool applyPlacement(HWND window, const PlacementBytes& bytes, int& showCommand);

} // namespace framework
