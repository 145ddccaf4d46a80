// The list as a table of texts: which entry stands in which row, what each cell says, and the row's image.
// Knows no window.
#pragma once

#include "scheduler/model/descriptions.h"
#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulelist.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace scheduler {

enum class ScheduleColumn : std::uint8_t { Project, Schedule, Parameters, NextRun, LastRun, LastResult };

/// The columns' headers in their order.
inline constexpr auto columnHeaders =
    std::to_array<const char*>({"Project", "Schedule", "Parameters", "Next Run", "Last Run", "Last Result"});
inline constexpr std::size_t columnCount = columnHeaders.size();

/// The state that a row's image shows; the values are the images' positions.
enum class RowImage : std::uint8_t {
    Running,
    Waiting, ///< for another project to end
    Disabled,
    Result, ///< the last run ended with a result text
    None,
};

/// The rows are the schedule's entries in an order of their own, which sorting changes. New entries come
/// last, and where entries are removed the others keep their order. Whoever changes the schedule, the rows
/// are in step with it.
class ScheduleRows : public ScheduleObserver {
public:
    /// Asks `state` for the engine's state each time a text depends on it. The schedule and the clock outlive
    /// the rows.
    ScheduleRows(ScheduleList& schedule, std::function<EngineState()> state, const base::Clock& clock);
    ~ScheduleRows() override;

    std::size_t size() const { return order_.size(); }

    /// The position in the schedule of the entry in a row.
    std::size_t entryAt(std::size_t row) const { return order_[row]; }

    std::string text(std::size_t row, ScheduleColumn column) const;

    RowImage image(std::size_t row) const;

    /// The row's texts with tabs between them and a line break at the end. A tab or line break within a text
    /// becomes a blank.
    std::string line(std::size_t row) const;

    /// The moment as which the texts see the present.
    base::TimeValue now() const { return clock_.now(); }
    /// Until when the row's texts and image as of `now` hold if the entry does not change.
    base::TimeValue textsHoldUntil(std::size_t row, base::TimeValue now) const;

    /// Sorts by the cells' texts as shown, byte by byte: ascending, or the other way round when the rows are
    /// sorted by this column already. Equal texts stand in the schedule's order.
    void sortBy(ScheduleColumn column);
    /// The column that the rows were sorted by last; none after a load.
    std::optional<ScheduleColumn> sortColumn() const { return sortColumn_; }
    bool isAscending() const { return ascending_; }

    /// The first row from `start` on, and then from the top, whose project begins with `prefix` in any case.
    std::optional<std::size_t> findProject(std::string_view prefix, std::size_t start) const;

    void makeRoom(std::size_t count) override;
    void onEntryInserted(std::size_t position, bool becameLast) override;
    void onEntriesLoaded(std::size_t count) override;
    void onEntriesRemoved(std::span<const std::size_t> positions) override;
    void onCleared() override;

private:
    bool isWaiting(const ScheduledProject& entry) const;
    std::string entryText(std::size_t position, ScheduleColumn column) const;

    ScheduleList& schedule_;
    std::function<EngineState()> state_;
    const base::Clock& clock_;
    std::vector<std::uint32_t> order_; // per row: the entry's position in the schedule
    std::optional<ScheduleColumn> sortColumn_;
    bool ascending_ = true;
};

} // namespace scheduler
