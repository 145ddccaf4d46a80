// How large a property sheet is for its pages.
#pragma once

#include <windows.h>

#include <span>

namespace framework {

/// A page and the size that its template asks for.
struct SheetPage {
    HWND window;
    SIZE size;
};

/// Makes the sheet as large as its largest page needs. A page's dialog units follow its own font, but the
/// platform makes room for it by the units of the sheet's: where the two differ, as they do in some
/// resolutions, pages would be cut or stand in too much room. It never gets too narrow for its buttons.
void fitSheet(HWND sheet, std::span<const SheetPage> pages);

} // namespace framework
