#include "scheduler/model/trackedreferences.h"

#include "scheduler/model/deletion.h"

#include <numeric>
#include <utility>

namespace scheduler {

TrackedReferences::TrackedReferences(ScheduleList& list) : list_(list), now_(list.size()) {
    std::iota(now_.begin(), now_.end(), 0);
    list_.addObserver(*this);
}

TrackedReferences::~TrackedReferences() {
    list_.removeObserver(*this);
}

void TrackedReferences::bringUpToDate(ScheduledProject& record, std::size_t position) const {
    if (!moved_)
        return; // one that has always followed itself is as the user left it
    if (record.afterIndex >= 0 && std::cmp_less(record.afterIndex, now_.size()))
        record.afterIndex = now_[static_cast<std::size_t>(record.afterIndex)];
    breakSelfReference(record, position);
}

void TrackedReferences::onReferencesMoved(const MovedReferences& moved) {
    moved_ = true;
    for (std::int32_t& reference : now_)
        reference = moved.now(reference);
}

} // namespace scheduler
