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

/// The list control that shows the schedule. Observes the schedule; fetches texts while painting.
class ScheduleListView : public framework::Window, private ScheduleObserver {
public:
    /// `rows` must already observe `schedule`. Both must outlive the view.
    ScheduleListView(ScheduleList& schedule, ScheduleRows& rows);
    ~ScheduleListView() override;

    [[nodiscard]] bool createIn(HWND parent);

    /// `area` is in the parent's client coordinates.
    void moveTo(const RECT& area);

    /// Call after loading the schedule. If no width was saved, the columns fit the rows until the user
    /// resizes one.
    void restoreColumns(base::RegistryStore& store);
    void saveColumns(base::RegistryStore& store) const { saveColumnWidths(handle(), store); }

    Selection selectedEntries() const;
    /// The entry of the topmost selected row.
    std::optional<std::size_t> firstSelectedEntry() const;

    /// Repaints if a painted text may be out of date at `now`.
    void onTimePassed(base::TimeValue now);

private:
    // Clears the selection. Focuses the row at the former place of the topmost selected row.
    void onEntriesRemoved(std::span<const std::size_t> positions) override;
    void onScheduleChanged() override;

    framework::Handled onMessage(const framework::Message& message) override;
    framework::Handled onReflectedNotify(const NMHDR& notification) override;
    void fitColumns() noexcept;
    void applySystemColours() const;
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
    bool columnsFollowRows_ = false;
    base::TimeValue paintedAt_;                             ///< latest painting of a row; refresh() resets it
    base::TimeValue validUntil_ = base::TimeValue::never(); ///< earliest textsValidUntil() of a painted row
};

} // namespace scheduler
