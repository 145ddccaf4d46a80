#pragma once

#include <windows.h>

#include <span>

namespace framework {

/// A page and its template's size in pixels.
struct SheetPage {
    HWND window;
    SIZE size;
};

/// Makes the sheet as large as its largest page, but never too narrow for its buttons. The platform computes
/// with the sheet's font, but pages use their own.
void fitSheet(HWND sheet, std::span<const SheetPage> pages);

} // namespace framework
