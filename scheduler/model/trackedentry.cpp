#include "scheduler/model/trackedentry.h"

namespace scheduler {

TrackedEntry::TrackedEntry(ScheduleList& list, std::size_t position) : list_(list), position_(position) {
    list_.addObserver(*this);
}

TrackedEntry::~TrackedEntry() {
    list_.removeObserver(*this);
}

void TrackedEntry::onEntryInserted(std::size_t position, bool) {
    if (position_ && position <= *position_)
        ++*position_;
}

void TrackedEntry::onEntriesLoaded(std::size_t) {
    position_.reset();
}

void TrackedEntry::onEntriesRemoved(std::span<const std::size_t> positions) {
    // They descend, so that each leaves those behind it in their places for the next.
    for (const std::size_t removed : positions) {
        if (position_ == removed)
            position_.reset();
        else if (position_ && removed < *position_)
            --*position_;
    }
}

void TrackedEntry::onCleared() {
    position_.reset();
}

} // namespace scheduler
