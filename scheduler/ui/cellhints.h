// What is cut off in the list, shown whole when the mouse rests on it.
#pragma once

#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

namespace scheduler {

/// Watches the mouse over the list. Outlived by neither the list nor the rows.
class CellHints : public framework::MessageFilter {
public:
    CellHints(framework::Window& list, const ScheduleRows& rows) : list_(list), rows_(rows) {}

private:
    struct Cell {
        int row = -1; ///< -1: none
        int column = 0;

        friend bool operator==(const Cell&, const Cell&) = default;
    };

    framework::Handled filterMessage(framework::Window& window, const framework::Message& message) override;
    void onMouseMove(POINT point);
    void onMouseRests();

    Cell cellAt(POINT point) const;
    bool isCut(const Cell& cell, const std::string& text) const;

    framework::Window& list_;
    const ScheduleRows& rows_;
    Cell underMouse_;
};

} // namespace scheduler
