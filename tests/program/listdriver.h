#pragma once

#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace driver {

inline constexpr int columns = static_cast<int>(scheduler::columnCount);
inline constexpr int nextRunColumn = static_cast<int>(scheduler::ScheduleColumn::NextRun);
inline constexpr int lastRunColumn = static_cast<int>(scheduler::ScheduleColumn::LastRun);
inline constexpr int lastResultColumn = static_cast<int>(scheduler::ScheduleColumn::LastResult);

class ListDriver {
public:
    explicit ListDriver(HWND mainWindow);

    HWND handle() const { return list_; }

    std::vector<std::string> headers() const;
    int rowCount() const;

    /// `bufferSize` includes the NUL.
    std::string cell(int row, int column, std::size_t bufferSize = 1024) const;
    std::vector<std::string> rowTexts(int row) const;
    std::vector<std::string> columnTexts(int column) const;

    /// Selects only these rows and focuses the first.
    void select(const std::vector<int>& rows) const;
    void selectAll() const;
    std::vector<int> selectedRows() const;
    int focusedRow() const;

    void clickHeader(int column) const;
    int sortArrow(int column) const;

    int columnWidth(int column) const;
    void setColumnWidth(int column, int width) const;

    void pressKey(WPARAM key) const;
    void doubleClickRow(int row) const;

private:
    void setState(int row, UINT state, UINT mask) const;
    RECT rowPlace(int row) const;

    HWND list_;
    HWND header_;
};

} // namespace driver
