#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <optional>
#include <string>

namespace scheduler {

void insertColumns(HWND list);

/// The column width, in pixels, that shows all of `text`. The list must not be empty.
int neededWidth(HWND list, int column, const std::string& text);

/// Applies the valid saved widths (in pixels), then fits the other columns to their headers and first rows in
/// the remaining room. False if no valid width was saved.
[[nodiscard]] bool restoreColumnWidths(HWND list, const ScheduleRows& rows, base::RegistryStore& store);
/// Fits all columns to their headers and first rows.
void fitColumnWidths(HWND list, const ScheduleRows& rows);
/// Whether the header's `notification` says that the user resized a column.
[[nodiscard]] bool isColumnResize(const NMHDR& notification);
void saveColumnWidths(HWND list, base::RegistryStore& store);

/// Shows the arrow in the header of `column` and removes any other.
void showSortArrow(HWND list, std::optional<ScheduleColumn> column, bool ascending);

} // namespace scheduler
