// The columns of the schedule's list control: their headers, their widths from start to start, the sort
// arrow.
#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <optional>
#include <string>

namespace scheduler {

void insertColumns(HWND list);

/// The pixels that a column needs to show a cell's text whole. The list must not be empty.
int neededWidth(HWND list, int column, const std::string& text);

/// Sets the saved widths, in pixels. Columns without a sensible one fit their headers and first rows, and
/// divide the room that the others leave in the list.
void restoreColumnWidths(HWND list, const ScheduleRows& rows, base::RegistryStore& store);
void saveColumnWidths(HWND list, base::RegistryStore& store);

/// In the header of `column`, and in no other.
void showSortArrow(HWND list, std::optional<ScheduleColumn> column, bool ascending);

} // namespace scheduler
