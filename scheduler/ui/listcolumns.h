#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <optional>
#include <string>

namespace scheduler {

void insertColumns(HWND list);

/// The pixels that a cell needs to show `text` whole. The list must not be empty.
int neededWidth(HWND list, int column, const std::string& text);

/// Columns without a valid saved width (in pixels) are fitted to their headers and first rows, in the room
/// that the others leave. Returns whether any width was saved.
[[nodiscard]] bool restoreColumnWidths(HWND list, const ScheduleRows& rows, base::RegistryStore& store);
/// Fits all columns to their headers and first rows.
void fitColumnWidths(HWND list, const ScheduleRows& rows);
/// Whether the header reports that the user has set the width of a column.
[[nodiscard]] bool isColumnResize(const NMHDR& notification);
void saveColumnWidths(HWND list, base::RegistryStore& store);

/// Shows the arrow in the header of `column` only.
void showSortArrow(HWND list, std::optional<ScheduleColumn> column, bool ascending);

} // namespace scheduler
