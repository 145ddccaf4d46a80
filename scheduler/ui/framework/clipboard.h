#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// Replaces the clipboard by ANSI text. False, with no change, if it is in use or memory is short.
[[nodiscard]] bool copyToClipboard(HWND owner, const std::string& text);

} // namespace framework
