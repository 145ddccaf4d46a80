#include "scheduler/ui/framework/textextent.h"

#include "lib/base/opsys.h"
#include "lib/base/strings.h"

#include <array>

namespace framework {
namespace {

bool isLeftAlignedText(HWND window) {
    std::array<char, 8> className{};
    GetClassNameA(window, className.data(), static_cast<int>(className.size()));
    return base::compareNoCase(className.data(), "static") == 0 &&
           (GetWindowLongA(window, GWL_STYLE) & SS_TYPEMASK) == SS_LEFT;
}

void widenIfCut(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    const SIZE needed = TextExtent(window).of(base::windowText(window));
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

void widenCutTexts(HWND dialog) {
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (isLeftAlignedText(child))
            widenIfCut(child);
}

} // namespace framework
