#include "scheduler/ui/framework/sheetfit.h"

#include "scheduler/ui/framework/window.h"

#include <prsht.h>

#include <algorithm>
#include <vector>

namespace framework {
namespace {

/// In the sheet's client coordinates.
RECT placeIn(HWND sheet, HWND child) {
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, sheet, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void setSize(HWND window, SIZE size) {
    SetWindowPos(window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

SIZE sum(SIZE one, SIZE other) {
    return {one.cx + other.cx, one.cy + other.cy};
}

void move(HWND sheet, HWND child, SIZE by) {
    const RECT place = placeIn(sheet, child);
    SetWindowPos(child, nullptr, place.left + by.cx, place.top + by.cy, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// The sheet's children except the tabs and the pages. All are below the tabs.
std::vector<HWND> buttonsOf(HWND sheet, HWND tabs, std::span<const SheetPage> pages) {
    std::vector<HWND> buttons;
    for (HWND child = GetWindow(sheet, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (child != tabs && std::ranges::find(pages, child, &SheetPage::window) == pages.end())
            buttons.push_back(child);
    return buttons;
}

/// Narrowing the sheet by this width makes the margins left and right of its buttons equal.
LONG spareWidth(HWND sheet, const std::vector<HWND>& buttons) {
    RECT client{};
    GetClientRect(sheet, &client);
    LONG left = client.right;
    LONG right = 0;
    for (const HWND button : buttons)
        if (GetWindowLongA(button, GWL_STYLE) & WS_VISIBLE) { // not IsWindowVisible: the sheet may be hidden
            left = std::min(left, placeIn(sheet, button).left);
            right = std::max(right, placeIn(sheet, button).right);
        }
    return std::max(left - (client.right - right), 0L);
}

} // namespace

void fitSheet(HWND sheet, std::span<const SheetPage> pages) {
    const auto tabs = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETTABCONTROL, 0, 0));
    const auto current = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
    if (!tabs || !current)
        return;
    const SIZE room = sizeOf(current);
    SIZE needed{};
    for (const SheetPage& page : pages)
        needed = {std::max(needed.cx, page.size.cx), std::max(needed.cy, page.size.cy)};
    const std::vector<HWND> buttons = buttonsOf(sheet, tabs, pages);
    const SIZE by{std::max(needed.cx - room.cx, -spareWidth(sheet, buttons)), needed.cy - room.cy};
    // The sheet may not have resized the hidden pages yet.
    for (const SheetPage& page : pages)
        setSize(page.window, sum(room, by));
    if (by.cx == 0 && by.cy == 0)
        return;
    setSize(sheet, sum(sizeOf(sheet), by));
    setSize(tabs, sum(sizeOf(tabs), by));
    for (const HWND button : buttons)
        move(sheet, button, by);
}

} // namespace framework
