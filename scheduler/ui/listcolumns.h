// The columns of the schedule's list control: their headers, their widths from start to start, the sort
// arrow.
#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <optional>

namespace scheduler {

void insertColumns(HWND list);

/// Sets the saved widths, in pixels; a column without a sensible one gets its share of the list's width.
void restoreColumnWidths(HWND list, base::RegistryStore& store);
void saveColumnWidths(HWND list, base::RegistryStore& store);

/// In the header of `column`, and in no other.
void showSortArrow(HWND list, std::optional<ScheduleColumn> column, bool ascending);

} // namespace scheduler
