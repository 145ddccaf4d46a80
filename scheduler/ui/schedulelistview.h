// The list control that shows the schedule's rows. It asks for a cell's text when it paints it, and follows
// the schedule by itself.
#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/ui/cellhints.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/listcolumns.h"
#include "scheduler/ui/schedulerows.h"
#include "scheduler/ui/selection.h"

#include <windows.h>

#include <commctrl.h>

#include <optional>

namespace scheduler {

class ScheduleListView : public framework::Window, private ScheduleObserver {
public:
    /// `rows` are those of `schedule` and are told of its changes before the view. Both outlive it.
    ScheduleListView(ScheduleList& schedule, ScheduleRows& rows);
    ~ScheduleListView() override;

    /// Makes the control as a child of `parent`.
    [[nodiscard]] bool createIn(HWND parent);

    /// Fills `area` of the parent's client area.
    void moveTo(const RECT& area);

    /// See listcolumns.h. Call after the schedule is loaded.
    void restoreColumns(base::RegistryStore& store);
    void saveColumns(base::RegistryStore& store) const { saveColumnWidths(handle(), store); }

    Selection selectedEntries() const;
    /// The entry of the topmost selected row.
    std::optional<std::size_t> firstSelectedEntry() const;

    /// Repaints if a painted text may be out of date at `now`.
    void onTimePassed(base::TimeValue now);

private:
    // After a removal no row is selected, and the focus is where the topmost selected row was.
    void onEntriesRemoved(std::span<const std::size_t> positions) override;
    void onScheduleChanged() override;

    framework::Handled onMessage(const framework::Message& message) override;
    framework::Handled onReflectedNotify(const NMHDR& notification) override;
    void takeSystemColours() const;
    void onGetItem(LVITEMA& item) const;
    LRESULT onCustomDraw(NMLVCUSTOMDRAW& draw);
    bool isGrey(std::size_t row) const;
    void onRowPainted(std::size_t row);
    void refresh() noexcept;
    void onColumnClick(int column);
    LRESULT onFindItem(const NMLVFINDITEMA& request) const;

    std::optional<std::size_t> entryInRow(int row) const;
    void selectAll() const;
    void copySelected() const;
    void selectEntries(const Selection& entries);
    void focusEntry(std::size_t entry);

    ScheduleList& schedule_;
    ScheduleRows& rows_;
    CellHints hints_;
    // Of all texts painted since the last repaint.
    base::TimeValue paintedAt_;                             ///< the latest moment at which one was made
    base::TimeValue validUntil_ = base::TimeValue::never(); ///< from when one may say something else
};

} // namespace scheduler
