#include "scheduler/ui/listcolumns.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>

namespace scheduler {
namespace {

constexpr std::uint32_t widestSavedColumn = 4000;

// Each column's share of the list's width until the user sets it, in percent.
constexpr std::array<int, columnCount> defaultShares = {13, 24, 17, 16, 16, 14};
static_assert(std::ranges::count(defaultShares, 0) == 0, "a column without a share would not be seen");
static_assert(std::accumulate(defaultShares.begin(), defaultShares.end(), 0) == 100);

std::string widthName(std::size_t column) {
    return "Column" + std::to_string(column);
}

int defaultWidth(HWND list, std::size_t column) {
    RECT area{};
    GetClientRect(list, &area);
    // The vertical scroll bar, once the rows need one, must not make a horizontal one necessary.
    return (area.right - GetSystemMetrics(SM_CXVSCROLL)) * defaultShares[column] / 100;
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

void restoreColumnWidths(HWND list, base::RegistryStore& store) {
    for (std::size_t column = 0; column < columnCount; ++column) {
        std::uint32_t saved = 0;
        const bool usable = store.readNumber(widthName(column), saved) && saved <= widestSavedColumn;
        ListView_SetColumnWidth(list, static_cast<int>(column),
                                usable ? static_cast<int>(saved) : defaultWidth(list, column));
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
