#include "scheduler/ui/framework/sheetfit.h"

#include <prsht.h>

#include <algorithm>
#include <vector>

namespace framework {
namespace {

/// In the sheet's client area.
RECT placeIn(HWND sheet, HWND child) {
    RECT place{};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, sheet, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void resize(HWND window, SIZE by) {
    RECT place{};
    GetWindowRect(window, &place);
    SetWindowPos(window, nullptr, 0, 0, place.right - place.left + by.cx, place.bottom - place.top + by.cy,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void move(HWND sheet, HWND child, SIZE by) {
    const RECT place = placeIn(sheet, child);
    SetWindowPos(child, nullptr, place.left + by.cx, place.top + by.cy, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

/// What the platform put around the pages, the tabs left out: all of it stands below them.
std::vector<HWND> buttonsOf(HWND sheet, HWND tabs, std::span<const SheetPage> pages) {
    std::vector<HWND> buttons;
    for (HWND child = GetWindow(sheet, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (child != tabs && std::ranges::find(pages, child, &SheetPage::window) == pages.end())
            buttons.push_back(child);
    return buttons;
}

/// By how much the sheet can get narrower: until there is as much room beside its buttons as on their other
/// side.
LONG spareWidth(HWND sheet, const std::vector<HWND>& buttons) {
    RECT client{};
    GetClientRect(sheet, &client);
    LONG left = client.right;
    LONG right = 0;
    for (const HWND button : buttons)
        if (GetWindowLongA(button, GWL_STYLE) & WS_VISIBLE) { // the sheet itself may not be shown yet
            left = std::min(left, placeIn(sheet, button).left);
            right = std::max(right, placeIn(sheet, button).right);
        }
    return std::max(left - (client.right - right), 0L);
}

} // namespace

void fitSheet(HWND sheet, std::span<const SheetPage> pages) {
    const auto tabs = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETTABCONTROL, 0, 0));
    const auto current = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
    RECT room{};
    if (!tabs || !GetWindowRect(current, &room))
        return;
    SIZE needed{};
    for (const SheetPage& page : pages)
        needed = {std::max(needed.cx, page.size.cx), std::max(needed.cy, page.size.cy)};
    const std::vector<HWND> buttons = buttonsOf(sheet, tabs, pages);
    const SIZE by{std::max(needed.cx - (room.right - room.left), -spareWidth(sheet, buttons)),
                  needed.cy - (room.bottom - room.top)};
    if (by.cx == 0 && by.cy == 0)
        return;
    resize(sheet, by);
    resize(tabs, by);
    for (const SheetPage& page : pages)
        resize(page.window, by);
    for (const HWND button : buttons)
        move(sheet, button, by);
}

} // namespace framework
