#include "scheduler/ui/popupmenus.h"

#include "lib/base/opsys.h"
#include "resources/ids.h"

namespace scheduler {

void trackMenu(HWND owner, UINT menuResource) {
    const HMENU menu = LoadMenuA(base::moduleHandle(), MAKEINTRESOURCEA(menuResource));
    POINT cursor{};
    GetCursorPos(&cursor);
    TrackPopupMenu(GetSubMenu(menu, 0), TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, owner, nullptr);
    DestroyMenu(menu);
}

void onIconMouse(UINT mouseMessage, WindowPresence& presence) {
    const HWND window = presence.window();
    switch (mouseMessage) {
    case WM_LBUTTONDOWN:
        presence.bringForwardIfShown();
        break;
    case WM_LBUTTONDBLCLK:
        presence.show();
        break;
    case WM_RBUTTONDOWN:
        // A menu closes when the user clicks elsewhere only if its window is in the foreground; one that is
        // hidden stays hidden there.
        SetForegroundWindow(window);
        trackMenu(window, IDR_TRAY_MENU);
        PostMessageA(window, WM_NULL, 0, 0);
        break;
    default:
        break;
    }
}

} // namespace scheduler
