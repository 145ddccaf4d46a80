#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// Replaces the clipboard's content with ANSI text. False if the clipboard stays in use or memory runs out.
[[nodiscard]] bool copyToClipboard(HWND owner, const std::string& text);

} // namespace framework
