#include "scheduler/ui/cellhints.h"

#include "scheduler/ui/framework/hintwindow.h"
#include "scheduler/ui/listcolumns.h"

#include <windowsx.h>

#include <commctrl.h>

#include <exception>
#include <utility>

namespace scheduler {
namespace {

void trackHover(HWND window) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof(track);
    track.dwFlags = TME_HOVER | TME_LEAVE;
    track.hwndTrack = window;
    track.dwHoverTime = HOVER_DEFAULT;
    TrackMouseEvent(&track);
}

/// A hint is topmost, so it would cover an open menu.
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
        onMouseHover();
        break;
    case WM_MOUSELEAVE:
        underMouse_ = {};
        break;
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: // may open a menu
        dismiss();
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
    dismiss();
    underMouse_ = cell;
    if (cell.row >= 0)
        trackHover(list_.handle());
}

void CellHints::onMouseHover() {
    framework::Hint hint;
    hint.text = textUnderMouse();
    if (hint.text.empty() || !isTruncated(underMouse_, hint.text) || isMenuOpen())
        return;
    GetCursorPos(&hint.point);
    if (framework::HintWindow::show(&list_, hint))
        hintText_ = std::move(hint.text);
}

void CellHints::dismiss() {
    underMouse_ = {}; // the next hint needs a new hover
    hintText_.clear();
    framework::HintWindow::dismiss(list_);
}

void CellHints::onTextsChanged() noexcept {
    if (hintText_.empty())
        return;
    try {
        if (textUnderMouse() == hintText_)
            return;
    } catch (const std::exception&) {
        // Out of memory: dismiss the hint without comparing.
    }
    dismiss();
}

/// Empty if there is no cell.
std::string CellHints::textUnderMouse() const {
    const auto row = static_cast<std::size_t>(underMouse_.row);
    if (underMouse_.row < 0 || row >= rows_.size())
        return {};
    return rows_.text(row, static_cast<ScheduleColumn>(underMouse_.column));
}

CellHints::Cell CellHints::cellAt(POINT point) const {
    LVHITTESTINFO hit{};
    hit.pt = point;
    ListView_SubItemHitTest(list_.handle(), &hit);
    return hit.iItem < 0 ? Cell() : Cell{hit.iItem, hit.iSubItem};
}

bool CellHints::isTruncated(const Cell& cell, const std::string& text) const {
    return neededWidth(list_.handle(), cell.column, text) >
           ListView_GetColumnWidth(list_.handle(), cell.column);
}

} // namespace scheduler
