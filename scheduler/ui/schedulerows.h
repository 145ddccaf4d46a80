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

/// Indexed by ScheduleColumn.
inline constexpr auto columnHeaders =
    std::to_array<const char*>({"Project", "Schedule", "Parameters", "Next Run", "Last Run", "Last Result"});
inline constexpr std::size_t columnCount = columnHeaders.size();

/// The state that a row's image shows. The values index the image list.
enum class RowImage : std::uint8_t {
    Running,
    Waiting, ///< for another project to end
    Disabled,
    Result, ///< the last run ended with a result text
    None,
};

/// The schedule as a table of texts, independent of windows. One row per entry, in the order of the last
/// sort; new entries are appended. Observes the schedule.
class ScheduleRows : public ScheduleObserver {
public:
    /// Calls `state` when a text or image needs the engine's state. Schedule and clock must outlive the rows.
    ScheduleRows(ScheduleList& schedule, std::function<EngineState()> state, const base::Clock& clock);
    ~ScheduleRows() override;

    std::size_t size() const { return order_.size(); }

    /// The schedule position of the row's entry.
    std::size_t entryAt(std::size_t row) const { return order_[row]; }

    std::string text(std::size_t row, ScheduleColumn column) const;

    RowImage image(std::size_t row) const;

    /// The row's texts, separated by tabs, then CR LF. Tabs and line breaks in texts become spaces.
    std::string line(std::size_t row) const;

    base::TimeValue now() const { return clock_.now(); }
    /// When the texts and the image that the row has at `now` expire, unless its entry changes.
    base::TimeValue textsValidUntil(std::size_t row, base::TimeValue now) const;

    /// Sorts bytewise by text. Sorting by the same column again reverses the direction. Equal texts stay in
    /// schedule order.
    void sortBy(ScheduleColumn column);
    /// Empty until the first sort after a load.
    std::optional<ScheduleColumn> sortColumn() const { return sortColumn_; }
    bool isAscending() const { return ascending_; }

    /// The first row from `start`, wrapping around, whose project begins with `prefix`, ignoring case.
    std::optional<std::size_t> findProject(std::string_view prefix, std::size_t start) const;

    void makeRoom(std::size_t count) override;
    void onEntryInserted(std::size_t position, bool appended) override;
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
