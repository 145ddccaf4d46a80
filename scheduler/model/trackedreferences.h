// Keeping the reference of a record right that is outside the schedule, while entries are deleted there.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace scheduler {

/// Knows what each reference has become that was made when this object was. The list has to outlive it.
class TrackedReferences : private ScheduleObserver {
public:
    explicit TrackedReferences(ScheduleList& list);
    TrackedReferences(const TrackedReferences&) = delete;
    TrackedReferences& operator=(const TrackedReferences&) = delete;
    ~TrackedReferences() override;

    /// Does to `record`, which is to stand at `position`, what each deletion since then has done to the
    /// entries. A reference that named no entry stays.
    void bringUpToDate(ScheduledProject& record, std::size_t position) const;

private:
    void onEntryInserted(std::size_t, bool) override {}
    void onEntriesLoaded(std::size_t) override {}
    void onReferencesMoved(const MovedReferences& moved) override;

    ScheduleList& list_;
    std::vector<std::int32_t> now_; ///< per reference as it was
    bool moved_ = false;
};

} // namespace scheduler
