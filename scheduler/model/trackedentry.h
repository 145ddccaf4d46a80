// Keeping hold of one entry while others come and go around it.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <optional>
#include <span>

namespace scheduler {

/// Knows where the entry stands that stood at a position when this object was made. The list has to outlive
/// it.
class TrackedEntry : private ScheduleObserver {
public:
    TrackedEntry(ScheduleList& list, std::size_t position);
    TrackedEntry(const TrackedEntry&) = delete;
    TrackedEntry& operator=(const TrackedEntry&) = delete;
    ~TrackedEntry() override;

    /// Nothing when the entry is gone.
    std::optional<std::size_t> position() const { return position_; }

private:
    void onEntryInserted(std::size_t position, bool becameLast) override;
    void onEntriesLoaded(std::size_t count) override;
    void onEntriesRemoved(std::span<const std::size_t> positions) override;
    void onCleared() override;

    ScheduleList& list_;
    std::optional<std::size_t> position_;
};

} // namespace scheduler
