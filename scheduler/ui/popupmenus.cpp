#include "scheduler/ui/popupmenus.h"

#include "lib/base/handles.h"
#include "lib/base/opsys.h"

namespace scheduler {

void trackMenu(HWND owner, UINT menuResource) {
    const base::Menu menu(LoadMenuA(base::moduleHandle(), MAKEINTRESOURCEA(menuResource)));
    if (!menu)
        return;
    POINT cursor{};
    GetCursorPos(&cursor);
    TrackPopupMenu(GetSubMenu(menu.get(), 0), TPM_RIGHTBUTTON, cursor.x, cursor.y, 0, owner, nullptr);
}

} // namespace scheduler
