#pragma once

#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <string>

namespace scheduler {

/// Shows the full text of a truncated cell on hover. The list and the rows must outlive this object.
class CellHints : public framework::MessageFilter {
public:
    CellHints(framework::Window& list, const ScheduleRows& rows);
    CellHints(const CellHints&) = delete;
    CellHints& operator=(const CellHints&) = delete;
    ~CellHints() override;

    void onRowsMoved() { dismiss(); }

    /// Dismisses a hint whose text is out of date.
    void onTextsChanged() noexcept;

private:
    struct Cell {
        int row = -1; ///< -1: none
        int column = 0;

        friend bool operator==(const Cell&, const Cell&) = default;
    };

    framework::Handled filterMessage(framework::Window& window, const framework::Message& message) override;
    void onMouseMove(POINT point);
    void onMouseHover();

    void dismiss();
    std::string textUnderMouse() const;

    Cell cellAt(POINT point) const;
    bool isTruncated(const Cell& cell, const std::string& text) const;

    framework::Window& list_;
    const ScheduleRows& rows_;
    Cell underMouse_;
    std::string hintText_; ///< empty: no hint
};

} // namespace scheduler
