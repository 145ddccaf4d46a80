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

    /// In pixels, on one line, without the mark of an access key.
    SIZE of(const std::string& text) const;

private:
    HWND window_;
    HDC context_;
    HGDIOBJ oldFont_;
};

/// Widens clipped one-line texts, check boxes and radio buttons: dialog units follow the average character,
/// so a text can be wider than its place.
void widenCutTexts(HWND dialog);

} // namespace framework
