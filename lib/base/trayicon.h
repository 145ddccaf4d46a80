// One notification icon per window. For the user-interface thread.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <cstdint>
#include <string>

namespace base {

/// The icon's message to its window; lParam is the mouse message.
inline constexpr UINT WM_TRAY_NOTIFY = WM_APP + 100;

/// Shows at most 63 characters of `tip`. False if there is no window or icon, or if the shell refuses.
[[nodiscard]] bool addTrayIcon(HWND window, std::uint16_t iconResource, const std::string& tip);

[[nodiscard]] bool modifyTrayIcon(HWND window, std::uint16_t iconResource, const std::string& tip);

[[nodiscard]] bool removeTrayIcon(HWND window);

/// Shows a warning balloon with at most 63 characters of the title and 255 of the text; longer text ends in
/// "...". False if the window has no icon or the shell refuses.
[[nodiscard]] bool showTrayBalloon(HWND window, const std::string& title, const std::string& text);

namespace detail {
/// The data for the shell. Separate, so that tests need no shell.
NOTIFYICONDATAA trayIconRecord(HWND window, UINT flags, HICON icon, const std::string& tip);
} // namespace detail

} // namespace base
