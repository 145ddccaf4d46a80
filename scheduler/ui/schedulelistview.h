// The list control that shows the schedule's rows. It asks for a cell's text when it paints it, and repaints
// only the rows whose texts have changed.
#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/listcolumns.h"
#include "scheduler/ui/schedulecommands.h"
#include "scheduler/ui/schedulerows.h"

#include <windows.h>

#include <commctrl.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace scheduler {

class ScheduleListView : public framework::Window {
public:
    explicit ScheduleListView(ScheduleRows& rows) : rows_(rows) {}

    /// Makes the control as a child of `parent`, which passes its notifications on to onNotify.
    [[nodiscard]] bool createIn(HWND parent);

    /// Fills `area` of the parent's client area.
    void moveTo(const RECT& area);

    /// See listcolumns.h.
    void restoreColumns(base::RegistryStore& store);
    void saveColumns(base::RegistryStore& store) const { saveColumnWidths(handle(), store); }

    Selection selectedEntries() const;
    /// The entry of the topmost selected row.
    std::optional<std::size_t> firstSelectedEntry() const;

    /// Brings the shown rows up to date with the schedule. Paints nothing when no shown text has changed; all
    /// of it when there is no memory to find that out.
    void refresh() noexcept;

    /// The same when the schedule has not changed, but the time has.
    void onTimePassed();

    /// The selected rows are gone: none is selected now, and the keyboard goes on at the place of the first
    /// of them.
    void onRowsDeleted();

    /// A notification of the control; nothing when it is not one that the list answers.
    framework::Handled onNotify(const NMHDR& notification);

private:
    using RowTexts = std::array<std::string, columnCount>;
    struct PaintedRow {
        /// From when, not later than they were made, until when the texts hold: for ever while none is
        /// painted.
        base::TimeValue from;
        base::TimeValue until = base::TimeValue::never();
        RowTexts texts;
    };

    framework::Handled onMessage(const framework::Message& message) override;
    void takeSystemColours() const;
    void onGetText(NMLVDISPINFOA& request) const;
    LRESULT onCustomDraw(const NMLVCUSTOMDRAW& draw);
    void repaintChangedRows();
    void onColumnClick(int column);
    LRESULT onFindItem(const NMLVFINDITEMA& request) const;

    std::optional<std::size_t> entryInRow(int row) const;
    void selectEntries(const Selection& entries);
    void focusEntry(std::size_t entry);

    PaintedRow rowAsOf(base::TimeValue now, std::size_t row) const;

    ScheduleRows& rows_;
    std::size_t firstPainted_ = 0;    // the row of the first element of painted_
    std::vector<PaintedRow> painted_; // what stands on the screen
};

} // namespace scheduler
