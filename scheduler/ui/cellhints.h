// What is cut off in the list, shown whole when the mouse rests on it.
#pragma once

#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

namespace scheduler {

/// Watches the mouse over the list for as long as it lives. The list and the rows have to outlive it.
class CellHints : public framework::MessageFilter {
public:
    CellHints(framework::Window& list, const ScheduleRows& rows);
    CellHints(const CellHints&) = delete;
    CellHints& operator=(const CellHints&) = delete;
    ~CellHints() override;

private:
    struct Cell {
        int row = -1; ///< -1: none
        int column = 0;

        friend bool operator==(const Cell&, const Cell&) = default;
    };

    framework::Handled filterMessage(framework::Window& window, const framework::Message& message) override;
    void onMouseMove(POINT point);
    void onMouseRests();
    void onContentMoved();

    Cell cellAt(POINT point) const;
    bool isCut(const Cell& cell, const std::string& text) const;

    framework::Window& list_;
    const ScheduleRows& rows_;
    Cell underMouse_;
};

} // namespace scheduler
