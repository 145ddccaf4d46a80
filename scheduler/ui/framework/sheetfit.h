#pragma once

#include <windows.h>

#include <span>

namespace framework {

/// A page and its template's size in pixels.
struct SheetPage {
    HWND window;
    SIZE size;
};

/// Fits the sheet to its largest page, but never makes it too narrow for its buttons. The platform computes
/// the size with the sheet's font, but pages use their own.
void fitSheet(HWND sheet, std::span<const SheetPage> pages);

} // namespace framework
