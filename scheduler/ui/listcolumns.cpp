#include "scheduler/ui/listcolumns.h"

#include "scheduler/ui/columnfit.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace scheduler {
namespace {

constexpr std::uint32_t widestSavedColumn = 4000;

// Measuring every row of a long list would delay the start.
constexpr std::size_t rowsMeasured = 50;

// Pixels that the control leaves free on the left and right of a text, in total.
constexpr int textMargins = 12;

std::string widthName(std::size_t column) {
    return "Column" + std::to_string(column);
}

int textWidth(HWND list, const std::string& text) {
    return textMargins + static_cast<int>(SendMessageA(list, LVM_GETSTRINGWIDTHA, 0,
                                                       reinterpret_cast<LPARAM>(text.c_str())));
}

int contentWidth(HWND list, const ScheduleRows& rows, std::size_t column) {
    const int sortArrow = GetSystemMetrics(SM_CXSMICON);
    int widest = textWidth(list, columnHeaders[column]) + sortArrow;
    for (std::size_t row = 0; row < std::min(rows.size(), rowsMeasured); ++row)
        widest = std::max(widest, neededWidth(list, static_cast<int>(column),
                                              rows.text(row, static_cast<ScheduleColumn>(column))));
    return widest;
}

using SavedWidths = std::array<std::optional<int>, columnCount>; // in pixels

/// Columns without a saved width share the room that the others leave.
void setWidths(HWND list, const ScheduleRows& rows, const SavedWidths& saved) {
    RECT place{};
    GetWindowRect(list, &place);
    // Reserve room for the vertical scroll bar, so that it never causes a horizontal one.
    int room = place.right - place.left - GetSystemMetrics(SM_CXVSCROLL);
    int headers = 0;
    std::vector<int> columns; // without a saved width
    std::vector<int> contents;
    for (std::size_t column = 0; column < columnCount; ++column) {
        if (saved[column]) {
            ListView_SetColumnWidth(list, static_cast<int>(column), *saved[column]);
            room -= *saved[column];
        } else {
            columns.push_back(static_cast<int>(column));
            contents.push_back(contentWidth(list, rows, column));
            headers += textWidth(list, columnHeaders[column]);
        }
    }
    const std::vector<int> widths = fitColumns(std::move(contents), std::max(room, headers));
    for (std::size_t i = 0; i < columns.size(); ++i)
        ListView_SetColumnWidth(list, columns[i], widths[i]);
}

} // namespace

void insertColumns(HWND list) {
    for (std::size_t column = 0; column < columnCount; ++column) {
        std::string header = columnHeaders[column];
        LVCOLUMNA description{};
        description.mask = LVCF_TEXT | LVCF_SUBITEM;
        description.pszText = header.data();
        description.iSubItem = static_cast<int>(column);
        SendMessageA(list, LVM_INSERTCOLUMNA, column, reinterpret_cast<LPARAM>(&description));
    }
}

int neededWidth(HWND list, int column, const std::string& text) {
    int width = textWidth(list, text);
    if (column == 0) { // also shows the image
        RECT row{};
        ListView_GetItemRect(list, 0, &row, LVIR_BOUNDS);
        RECT label{};
        ListView_GetItemRect(list, 0, &label, LVIR_LABEL);
        width += label.left - row.left;
    }
    return width;
}

bool restoreColumnWidths(HWND list, const ScheduleRows& rows, base::RegistryStore& store) {
    SavedWidths saved;
    for (std::size_t column = 0; column < columnCount; ++column) {
        std::uint32_t width = 0;
        if (store.readNumber(widthName(column), width) && width <= widestSavedColumn)
            saved[column] = static_cast<int>(width);
    }
    setWidths(list, rows, saved);
    return std::ranges::any_of(saved, [](const auto& width) { return width.has_value(); });
}

void fitColumnWidths(HWND list, const ScheduleRows& rows) {
    setWidths(list, rows, {});
}

bool isColumnResize(const NMHDR& notification) {
    switch (notification.code) {
    case HDN_ENDTRACKA:
    case HDN_ENDTRACKW:
    case HDN_DIVIDERDBLCLICKA:
    case HDN_DIVIDERDBLCLICKW:
        return true;
    default:
        return false;
    }
}

void saveColumnWidths(HWND list, base::RegistryStore& store) {
    for (std::size_t column = 0; column < columnCount; ++column)
        static_cast<void>(store.writeNumber(
            widthName(column),
            static_cast<std::uint32_t>(ListView_GetColumnWidth(list, static_cast<int>(column)))));
}

void showSortArrow(HWND list, std::optional<ScheduleColumn> column, bool ascending) {
    const HWND header = ListView_GetHeader(list);
    for (std::size_t index = 0; index < columnCount; ++index) {
        HDITEMA item{};
        item.mask = HDI_FORMAT;
        SendMessageA(header, HDM_GETITEMA, index, reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (column == static_cast<ScheduleColumn>(index))
            item.fmt |= ascending ? HDF_SORTUP : HDF_SORTDOWN;
        SendMessageA(header, HDM_SETITEMA, index, reinterpret_cast<LPARAM>(&item));
    }
}

} // namespace scheduler
