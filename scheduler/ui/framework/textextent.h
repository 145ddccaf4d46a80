#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// Measures texts in a window's font. Must not outlive the window.
class [[nodiscard]] TextExtent {
public:
    explicit TextExtent(HWND window);
    TextExtent(const TextExtent&) = delete;
    TextExtent& operator=(const TextExtent&) = delete;
    ~TextExtent();

    /// The size in pixels on one line. The "&" of an access key does not count.
    SIZE of(const std::string& text) const;

private:
    HWND window_;
    HDC context_;
    HGDIOBJ oldFont_;
};

/// Widens clipped one-line texts, check boxes and radio buttons. Dialog units are based on the
/// average character width, so a text can be wider than its control.
void widenTruncatedTexts(HWND dialog);

} // namespace framework
