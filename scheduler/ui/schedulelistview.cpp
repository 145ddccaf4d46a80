#include "scheduler/ui/schedulelistview.h"

#include "lib/base/opsys.h"
#include "resources/ids.h"
#include "scheduler/ui/framework/clipboard.h"
#include "scheduler/ui/framework/fonts.h"
#include "scheduler/ui/framework/redrawpause.h"
#include "scheduler/ui/listcolumns.h"
#include "scheduler/ui/rowimages.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace scheduler {
namespace {

// The list's name for screen readers; not displayed.
constexpr const char* accessibleName = "Schedule";

constexpr int allRows = -1; // for ListView_SetItemState

// WM_CHAR codes of letters typed with Ctrl.
constexpr WPARAM ctrlA = 'A' - '@';
constexpr WPARAM ctrlC = 'C' - '@';

std::string toAnsi(const wchar_t* text) {
    std::array<char, MAX_PATH> buffer{};
    WideCharToMultiByte(CP_ACP, 0, text, -1, buffer.data(), static_cast<int>(buffer.size() - 1), nullptr,
                        nullptr);
    return buffer.data();
}

} // namespace

ScheduleListView::ScheduleListView(ScheduleList& schedule, ScheduleRows& rows)
    : schedule_(schedule), rows_(rows), hints_(*this, rows) {
    schedule_.addObserver(*this);
}

ScheduleListView::~ScheduleListView() {
    schedule_.removeObserver(*this);
}

bool ScheduleListView::createIn(HWND parent) {
    const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    const HWND list = CreateWindowExA(
        0, WC_LISTVIEWA, accessibleName,
        WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, 0, 0, 0, 0,
        parent, reinterpret_cast<HMENU>(IDC_SCHEDULE_LIST), base::moduleHandle(), nullptr);
    if (!attach(list))
        return false;
    const framework::RedrawPause pause(list);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    SendMessageA(list, WM_SETFONT, reinterpret_cast<WPARAM>(framework::messageFont()), FALSE);
    // The list owns its image list.
    ListView_SetImageList(list, makeRowImages(GetSystemMetrics(SM_CXSMICON)).release(), LVSIL_SMALL);
    insertColumns(list);
    ListView_SetItemCountEx(list, rows_.size(), 0);
    return true;
}

void ScheduleListView::restoreColumns(base::RegistryStore& store) {
    const framework::RedrawPause pause(handle());
    columnsFollowRows_ = !restoreColumnWidths(handle(), rows_, store);
}

void ScheduleListView::moveTo(const RECT& area) {
    SetWindowPos(handle(), nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

Selection ScheduleListView::selectedEntries() const {
    Selection selected;
    for (int row = -1; (row = ListView_GetNextItem(handle(), row, LVNI_SELECTED)) >= 0;)
        selected.push_back(rows_.entryAt(static_cast<std::size_t>(row)));
    std::ranges::sort(selected);
    return selected;
}

std::optional<std::size_t> ScheduleListView::entryInRow(int row) const {
    return row >= 0 ? std::optional(rows_.entryAt(static_cast<std::size_t>(row))) : std::nullopt;
}

std::optional<std::size_t> ScheduleListView::firstSelectedEntry() const {
    return entryInRow(ListView_GetNextItem(handle(), -1, LVNI_SELECTED));
}

void ScheduleListView::selectEntries(const Selection& entries) {
    const bool all = entries.size() == rows_.size();
    ListView_SetItemState(handle(), allRows, all ? UINT{LVIS_SELECTED} : UINT{0}, LVIS_SELECTED);
    if (all || entries.empty())
        return;
    for (std::size_t row = 0; row < rows_.size(); ++row)
        if (std::ranges::binary_search(entries, rows_.entryAt(row)))
            ListView_SetItemState(handle(), static_cast<int>(row), LVIS_SELECTED, LVIS_SELECTED);
}

void ScheduleListView::focusEntry(std::size_t entry) {
    for (std::size_t row = 0; row < rows_.size(); ++row)
        if (rows_.entryAt(row) == entry)
            ListView_SetItemState(handle(), static_cast<int>(row), LVIS_FOCUSED, LVIS_FOCUSED);
}

void ScheduleListView::onEntriesRemoved(std::span<const std::size_t>) {
    if (!handle())
        return;
    const framework::RedrawPause pause(handle());
    const int first = ListView_GetNextItem(handle(), -1, LVNI_SELECTED); // the control still has the old rows
    ListView_SetItemState(handle(), allRows, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemCountEx(handle(), rows_.size(), LVSICF_NOSCROLL);
    const int last = static_cast<int>(rows_.size()) - 1;
    if (first >= 0 && last >= 0)
        ListView_SetItemState(handle(), std::min(first, last), LVIS_FOCUSED, LVIS_FOCUSED);
    hints_.onRowsMoved();
}

void ScheduleListView::onScheduleChanged() {
    if (!handle())
        return;
    if (static_cast<std::size_t>(ListView_GetItemCount(handle())) != rows_.size()) {
        ListView_SetItemCountEx(handle(), rows_.size(), LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL);
        fitColumns();
        hints_.onRowsMoved();
    }
    refresh();
}

void ScheduleListView::fitColumns() noexcept {
    if (!columnsFollowRows_)
        return;
    const framework::RedrawPause pause(handle());
    try {
        fitColumnWidths(handle(), rows_);
    } catch (const std::bad_alloc&) {
        return; // retried when the number of rows changes again
    }
}

void ScheduleListView::onTimePassed(base::TimeValue now) {
    // The clock may have been set back.
    if (now < paintedAt_ || now >= validUntil_)
        refresh();
}

void ScheduleListView::refresh() noexcept {
    // Painting sets these again. A hidden list is painted when it is shown.
    paintedAt_ = base::TimeValue();
    validUntil_ = base::TimeValue::never();
    InvalidateRect(handle(), nullptr, TRUE); // TRUE erases: some platforms do not paint over a removed image
    UpdateWindow(handle());
    hints_.onTextsChanged();
}

framework::Handled ScheduleListView::onMessage(const framework::Message& message) {
    // Accelerators send their commands to the focused window, but the parent handles them.
    if (message.id == WM_COMMAND && message.lParam == 0)
        return SendMessageA(GetParent(handle()), WM_COMMAND, message.wParam, 0);
    if (message.id == WM_SYSCOLORCHANGE)
        applySystemColours();
    if (message.id == WM_NOTIFY && isColumnResize(*reinterpret_cast<const NMHDR*>(message.lParam)))
        columnsFollowRows_ = false;
    // Handled here, or the control would search for a project that begins with the character.
    if (message.id == WM_CHAR && message.wParam == ctrlA) {
        selectAll();
        return 0;
    }
    if (message.id == WM_CHAR && message.wParam == ctrlC) {
        copySelected();
        return 0;
    }
    return std::nullopt;
}

void ScheduleListView::selectAll() const {
    ListView_SetItemState(handle(), allRows, LVIS_SELECTED, LVIS_SELECTED);
}

void ScheduleListView::copySelected() const {
    std::string lines;
    for (int row = -1; (row = ListView_GetNextItem(handle(), row, LVNI_SELECTED)) >= 0;)
        lines += rows_.line(static_cast<std::size_t>(row));
    if (!lines.empty())
        static_cast<void>(framework::copyToClipboard(handle(), lines));
}

/// Without this, the control keeps its old colours, on some platforms permanently.
void ScheduleListView::applySystemColours() const {
    ListView_SetBkColor(handle(), GetSysColor(COLOR_WINDOW));
    ListView_SetTextBkColor(handle(), GetSysColor(COLOR_WINDOW));
    ListView_SetTextColor(handle(), GetSysColor(COLOR_WINDOWTEXT));
    InvalidateRect(handle(), nullptr, TRUE);
}

framework::Handled ScheduleListView::onReflectedNotify(const NMHDR& notification) {
    switch (notification.code) {
    case LVN_GETDISPINFOA:
        onGetItem(reinterpret_cast<NMLVDISPINFOA&>(const_cast<NMHDR&>(notification)).item);
        return 0;
    case NM_DBLCLK:
        return SendMessageA(GetParent(handle()), WM_COMMAND, IDM_EDIT, 0);
    case LVN_COLUMNCLICK:
        onColumnClick(reinterpret_cast<const NMLISTVIEW&>(notification).iSubItem);
        return 0;
    case LVN_ODFINDITEMA:
        return onFindItem(reinterpret_cast<const NMLVFINDITEMA&>(notification));
    case LVN_ODFINDITEMW: { // some platforms send it even for an ANSI list
        NMLVFINDITEMA request = reinterpret_cast<const NMLVFINDITEMA&>(notification);
        const auto* sought = reinterpret_cast<const NMLVFINDITEMW&>(notification).lvfi.psz;
        const std::string text = sought ? toAnsi(sought) : std::string();
        request.lvfi.psz = text.c_str();
        return onFindItem(request);
    }
    case NM_CUSTOMDRAW:
        return onCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(notification)));
    default:
        return std::nullopt;
    }
}

void ScheduleListView::onGetItem(LVITEMA& item) const {
    const auto row = static_cast<std::size_t>(item.iItem);
    if (row >= rows_.size())
        return;
    // RowImage::None has no image in the list: nothing is drawn, but the text is indented. With I_IMAGENONE
    // some platforms do not indent it.
    if (item.mask & LVIF_IMAGE)
        item.iImage = static_cast<int>(rows_.image(row));
    if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0)
        return;
    const std::string text = rows_.text(row, static_cast<ScheduleColumn>(item.iSubItem));
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::memcpy(item.pszText, text.data(), length);
    item.pszText[length] = '\0';
}

LRESULT ScheduleListView::onCustomDraw(NMLVCUSTOMDRAW& draw) {
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
        onRowPainted(draw.nmcd.dwItemSpec);
        if (isGrey(draw.nmcd.dwItemSpec))
            draw.clrText = GetSysColor(COLOR_GRAYTEXT);
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

/// Selected rows are not grey. Ignores CDIS_SELECTED: with LVS_SHOWSELALWAYS it is set for every row.
bool ScheduleListView::isGrey(std::size_t row) const {
    return row < rows_.size() && schedule_[rows_.entryAt(row)].disabled &&
           !ListView_GetItemState(handle(), static_cast<int>(row), LVIS_SELECTED);
}

void ScheduleListView::onRowPainted(std::size_t row) {
    if (row >= rows_.size())
        return;
    const base::TimeValue now = rows_.now();
    paintedAt_ = std::max(paintedAt_, now);
    validUntil_ = std::min(validUntil_, rows_.textsValidUntil(row, now));
}

void ScheduleListView::onColumnClick(int column) {
    const Selection selected = selectedEntries();
    const std::optional<std::size_t> focused = entryInRow(ListView_GetNextItem(handle(), -1, LVNI_FOCUSED));
    rows_.sortBy(static_cast<ScheduleColumn>(column));
    showSortArrow(handle(), rows_.sortColumn(), rows_.isAscending());
    const framework::RedrawPause pause(handle());
    selectEntries(selected);
    if (focused)
        focusEntry(*focused);
    hints_.onRowsMoved();
}

LRESULT ScheduleListView::onFindItem(const NMLVFINDITEMA& request) const {
    if (!(request.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !request.lvfi.psz)
        return -1;
    const auto row =
        rows_.findProject(request.lvfi.psz, static_cast<std::size_t>(std::max(0, request.iStart)));
    return row ? static_cast<LRESULT>(*row) : -1;
}

} // namespace scheduler
