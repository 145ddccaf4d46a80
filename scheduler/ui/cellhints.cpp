#include "scheduler/ui/cellhints.h"

#include "scheduler/ui/framework/hintwindow.h"

#include <windowsx.h>

#include <commctrl.h>

#include <string>

namespace scheduler {
namespace {

// What the control leaves free beside a cell's text, on both sides together.
constexpr int cellMargins = 12;

void reportRest(HWND window) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof(track);
    track.dwFlags = TME_HOVER | TME_LEAVE;
    track.hwndTrack = window;
    track.dwHoverTime = HOVER_DEFAULT;
    TrackMouseEvent(&track);
}

/// A hint stands in front of everything: it would hide what the user is choosing from.
bool isMenuOpen() {
    GUITHREADINFO state{};
    state.cbSize = sizeof(state);
    return GetGUIThreadInfo(GetCurrentThreadId(), &state) && (state.flags & GUI_INMENUMODE);
}

} // namespace

CellHints::CellHints(framework::Window& list, const ScheduleRows& rows) : list_(list), rows_(rows) {
    list_.addFilter(*this);
}

CellHints::~CellHints() {
    list_.removeFilter(*this);
}

framework::Handled CellHints::filterMessage(framework::Window&, const framework::Message& message) {
    switch (message.id) {
    case WM_MOUSEMOVE:
        onMouseMove({GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)});
        break;
    case WM_MOUSEHOVER:
        onMouseRests();
        break;
    case WM_MOUSELEAVE:
        underMouse_ = {};
        break;
    case LVM_REDRAWITEMS: // rows have other texts
        if (underMouse_.row < static_cast<int>(message.wParam) || underMouse_.row > message.lParam)
            break;
        [[fallthrough]];
    case LVM_SETITEMCOUNT: // rows have come or gone
    case WM_SETREDRAW:     // or stand in another order
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: // which may open a menu
        onContentMoved();
        break;
    default:
        break;
    }
    return std::nullopt;
}

void CellHints::onMouseMove(POINT point) {
    const Cell cell = cellAt(point);
    if (cell == underMouse_)
        return;
    underMouse_ = cell;
    framework::HintWindow::dismiss(list_);
    if (cell.row >= 0)
        reportRest(list_.handle());
}

void CellHints::onMouseRests() {
    if (underMouse_.row < 0 || static_cast<std::size_t>(underMouse_.row) >= rows_.size() || isMenuOpen())
        return;
    framework::Hint hint;
    hint.text = rows_.text(static_cast<std::size_t>(underMouse_.row),
                           static_cast<ScheduleColumn>(underMouse_.column));
    if (!isCut(underMouse_, hint.text))
        return;
    GetCursorPos(&hint.point);
    static_cast<void>(framework::HintWindow::show(&list_, hint));
}

/// Under the mouse is something else now, or may be: what the hint says of it is wrong. The mouse has to come
/// to rest anew.
void CellHints::onContentMoved() {
    underMouse_ = {};
    framework::HintWindow::dismiss(list_);
}

CellHints::Cell CellHints::cellAt(POINT point) const {
    LVHITTESTINFO hit{};
    hit.pt = point;
    ListView_SubItemHitTest(list_.handle(), &hit);
    return hit.iItem < 0 ? Cell() : Cell{hit.iItem, hit.iSubItem};
}

bool CellHints::isCut(const Cell& cell, const std::string& text) const {
    const auto width =
        SendMessageA(list_.handle(), LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(text.c_str()));
    return width + cellMargins > ListView_GetColumnWidth(list_.handle(), cell.column);
}

} // namespace scheduler
