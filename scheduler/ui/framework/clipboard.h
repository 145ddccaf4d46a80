// Putting text on the clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// Replaces the clipboard's content by `text`, which is in the ANSI code page. False, with the clipboard
/// unchanged, when another program has it open or memory is short.
[[nodiscard]] bool copyToClipboard(HWND owner, const std::string& text);

} // namespace framework
