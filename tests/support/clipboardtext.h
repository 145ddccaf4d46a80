#pragma once

#include <windows.h>

#include <string>

namespace test {

/// Empty if the clipboard holds no text or cannot be opened.
inline std::wstring clipboardText() {
    std::wstring text;
    if (!OpenClipboard(nullptr))
        return text;
    if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT))
        if (const auto* const content = static_cast<const wchar_t*>(GlobalLock(memory))) {
            text = content;
            GlobalUnlock(memory);
        }
    CloseClipboard();
    return text;
}

} // namespace test
