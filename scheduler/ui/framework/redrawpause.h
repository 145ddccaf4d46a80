#pragma once

#include <windows.h>

namespace framework {

/// Suspends a list's redrawing until destroyed, then invalidates the list. Invalidating many rows one by one
/// is slow, and each change of a column would redraw the header.
class [[nodiscard]] RedrawPause {
public:
    explicit RedrawPause(HWND list) : list_(list) { SendMessageA(list_, WM_SETREDRAW, FALSE, 0); }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;
    ~RedrawPause() {
        SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(list_, nullptr, FALSE);
    }

private:
    HWND list_;
};

} // namespace framework
