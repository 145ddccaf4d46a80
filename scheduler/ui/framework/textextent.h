// How much room a text takes in a window's own font.
#pragma once

#include <windows.h>

#include <string>

namespace framework {

/// The window's device context with its font in it. Not to outlive the window.
class [[nodiscard]] TextExtent {
public:
    explicit TextExtent(HWND window);
    TextExtent(const TextExtent&) = delete;
    TextExtent& operator=(const TextExtent&) = delete;
    ~TextExtent();

    /// In pixels, on one line. The mark of an access key takes no room.
    SIZE of(const std::string& text) const;

private:
    HWND window_;
    HDC context_;
    HGDIOBJ oldFont_;
};

/// Gives the one-line texts of a dialog, those of check boxes and radio buttons among them, that do not fit
/// into their places the width that they need: dialog units follow the average character, and in some sizes
/// of the font a text is wider than its place.
void widenCutTexts(HWND dialog);

} // namespace framework
