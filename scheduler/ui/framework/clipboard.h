#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// Copies `text` (ANSI) to the clipboard. False if the clipboard stays in use or memory runs out.
[[nodiscard]] bool copyToClipboard(HWND owner, const std::string& text);

} // namespace framework
