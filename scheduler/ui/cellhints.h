// Hints that show a cell's whole text when it is cut off and the mouse rests on it.
#pragma once

#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <string>

namespace scheduler {

/// Watches the mouse over the list during its lifetime. The list and the rows must outlive it.
class CellHints : public framework::MessageFilter {
public:
    CellHints(framework::Window& list, const ScheduleRows& rows);
    CellHints(const CellHints&) = delete;
    CellHints& operator=(const CellHints&) = delete;
    ~CellHints() override;

    /// Call after rows moved: dismisses the hint.
    void onRowsMoved() { dismiss(); }

    /// Call after texts changed: dismisses a hint that says something else.
    void onTextsChanged() noexcept;

private:
    struct Cell {
        int row = -1; ///< -1: none
        int column = 0;

        friend bool operator==(const Cell&, const Cell&) = default;
    };

    framework::Handled filterMessage(framework::Window& window, const framework::Message& message) override;
    void onMouseMove(POINT point);
    void onMouseRests();

    void dismiss();
    std::string textUnderMouse() const;

    Cell cellAt(POINT point) const;
    bool isCut(const Cell& cell, const std::string& text) const;

    framework::Window& list_;
    const ScheduleRows& rows_;
    Cell underMouse_;
    std::string shown_; ///< the hint's text; empty without a hint
};

} // namespace scheduler
