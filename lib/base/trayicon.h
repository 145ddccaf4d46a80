// One icon in the notification area per window. For the user-interface thread.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <cstdint>
#include <string>

namespace base {

/// The message by which the icon reports the mouse to its window; lParam is the mouse message.
inline constexpr UINT WM_TRAY_NOTIFY = WM_APP + 100;

/// Adds the icon of the given resource number with at most 63 characters of `tip`. False when there is no
/// window, the icon cannot be loaded or the shell refuses. Icons are loaded once and kept.
[[nodiscard]] bool addTrayIcon(HWND window, std::uint16_t iconResource, const std::string& tip);

/// Changes the icon and the tip. False as for addTrayIcon.
[[nodiscard]] bool modifyTrayIcon(HWND window, std::uint16_t iconResource, const std::string& tip);

[[nodiscard]] bool removeTrayIcon(HWND window);

/// Shows a warning in a balloon at the icon: at most 63 characters of the title and 255 of the text, which
/// ends in "..." when it is longer. False when the window has no icon or the shell refuses.
[[nodiscard]] bool showTrayBalloon(HWND window, const std::string& title, const std::string& text);

namespace detail {
/// What the shell is told of the icon. Apart from the telling, so that it can be looked at without a shell.
NOTIFYICONDATAA trayIconRecord(HWND window, UINT flags, HICON icon, const std::string& tip);
} // namespace detail

} // namespace base
