#include "scheduler/ui/popupmenus.h"

#include "lib/base/opsys.h"
#include "resources/ids.h"

namespace scheduler {
namespace {

/// A menu closes when the user clicks elsewhere only if its window is in the foreground, hidden or not. But
/// keys that the user means for what he sees must not stay with a hidden window.
void openIconMenu(WindowPresence& presence) {
    const HWND window = presence.window();
    const HWND before = GetForegroundWindow();
    if (IsWindowVisible(window))
        presence.bringForwardIfShown();
    else
        SetForegroundWindow(window);
    trackMenu(window, IDR_TRAY_MENU);
    PostMessageA(window, WM_NULL, 0, 0);
    if (!IsWindowVisible(window) && GetForegroundWindow() == window && IsWindow(before))
        SetForegroundWindow(before);
}

} // namespace

void trackMenu(HWND owner, UINT menuResource) {
    const HMENU menu = LoadMenuA(base::moduleHandle(), MAKEINTRESOURCEA(menuResource));
    if (!menu)
        return;
    POINT cursor{};
    GetCursorPos(&cursor);
    TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, owner, nullptr);
    DestroyMenu(menu);
}

void onIconMouse(UINT mouseMessage, WindowPresence& presence) {
    switch (mouseMessage) {
    case WM_LBUTTONDOWN:
        presence.bringForwardIfShown();
        break;
    case WM_LBUTTONDBLCLK:
        presence.show();
        break;
    case WM_RBUTTONDOWN:
        openIconMenu(presence);
        break;
    default:
        break;
    }
}

} // namespace scheduler
