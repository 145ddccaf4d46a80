#include "scheduler/ui/framework/textextent.h"

#include "lib/base/opsys.h"
#include "scheduler/ui/framework/control.h"

#include <commctrl.h>

#include <array>

namespace framework {
namespace {

LONG typeOf(HWND window, LONG typeMask) {
    return GetWindowLongA(window, GWL_STYLE) & typeMask;
}

bool isLeftAlignedText(HWND window) {
    return isOfClass(window, "static") && typeOf(window, SS_TYPEMASK) == SS_LEFT;
}

bool isBoxWithText(HWND window) {
    return isOfClass(window, "button") && (typeOf(window, BS_TYPEMASK) == BS_AUTOCHECKBOX ||
                                           typeOf(window, BS_TYPEMASK) == BS_AUTORADIOBUTTON);
}

/// The size of a text, check box or radio button on one line; 0 for other controls.
SIZE neededBy(HWND window) {
    SIZE needed{};
    if (isLeftAlignedText(window))
        needed = TextExtent(window).of(base::windowText(window));
    else if (isBoxWithText(window))
        SendMessageA(window, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&needed));
    return needed;
}

void widenIfCut(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    const SIZE needed = neededBy(window);
    const LONG height = place.bottom - place.top;
    const bool hasOneLine = height < 2 * needed.cy;
    if (hasOneLine && needed.cx > place.right - place.left)
        SetWindowPos(window, nullptr, 0, 0, needed.cx, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

TextExtent::TextExtent(HWND window)
    : window_(window),
      context_(GetDC(window)),
      oldFont_(SelectObject(context_, reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0)))) {}

TextExtent::~TextExtent() {
    SelectObject(context_, oldFont_);
    ReleaseDC(window_, context_);
}

SIZE TextExtent::of(const std::string& text) const {
    RECT extent{};
    DrawTextA(context_, text.c_str(), -1, &extent, DT_CALCRECT | DT_SINGLELINE);
    return {extent.right, extent.bottom};
}

void widenTruncatedTexts(HWND dialog) {
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        widenIfCut(child);
}

} // namespace framework
