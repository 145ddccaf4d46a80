#include "scheduler/model/schedulelist.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace scheduler {

std::size_t grownCapacity(std::size_t neededCount, std::size_t recordSize) {
    const std::size_t neededBytes = neededCount * recordSize;
    if (neededBytes < 16384)
        return neededCount * 2;
    return neededCount + neededCount / (neededBytes < 131072 ? 2 : 4);
}

std::ptrdiff_t ScheduleList::insert(std::size_t position, ScheduledProject record) {
    position = std::min(position, entries_.size());
    if (!observersHaveRoomFor(entries_.size() + 1))
        return noMemory;
    try {
        if (entries_.size() == entries_.capacity())
            entries_.reserve(grownCapacity(entries_.size() + 1, sizeof(ScheduledProject)));
    } catch (const std::exception&) {
        // Out of memory, or more records than the address space holds.
        return noMemory;
    }
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(position), std::move(record));
    const bool appended = position + 1 == entries_.size();
    for (ScheduleObserver* const observer : observers_)
        observer->onEntryInserted(position, appended);
    notifyChanged();
    return static_cast<std::ptrdiff_t>(position);
}

void ScheduleList::remove(std::size_t position) {
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
    for (ScheduleObserver* const observer : observers_)
        observer->onEntriesRemoved({&position, 1});
    notifyChanged();
}

void ScheduleList::removeAll(const std::vector<std::size_t>& positions) {
    if (positions.empty())
        return;
    // Moves the remaining entries in one pass: erasing one by one would take quadratic time.
    auto removed = positions.rbegin();
    std::size_t kept = *removed;
    for (std::size_t position = kept; position < entries_.size(); ++position) {
        if (removed != positions.rend() && *removed == position)
            ++removed;
        else
            entries_[kept++] = std::move(entries_[position]);
    }
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(kept), entries_.end());
    for (ScheduleObserver* const observer : observers_)
        observer->onEntriesRemoved(positions);
    notifyChanged();
}

void ScheduleList::clear() {
    entries_.clear();
    for (ScheduleObserver* const observer : observers_)
        observer->onCleared();
    notifyChanged();
}

void ScheduleList::replace(std::size_t position, ScheduledProject record) {
    entries_[position] = std::move(record);
    notifyChanged();
}

bool ScheduleList::assign(std::vector<ScheduledProject> entries) {
    if (!observersHaveRoomFor(entries.size()))
        return false;
    entries_ = std::move(entries);
    for (ScheduleObserver* const observer : observers_)
        observer->onEntriesLoaded(entries_.size());
    notifyChanged();
    return true;
}

void ScheduleList::notifyChanged() {
    changedInBatch_ = openBatches_ > 0;
    if (changedInBatch_)
        return;
    for (ScheduleObserver* const observer : observers_)
        observer->onScheduleChanged();
}

bool ScheduleList::hasPendingRun() const {
    return std::ranges::any_of(entries_, [](const ScheduledProject& entry) {
        return !entry.disabled && entry.nextRun != base::TimeValue::never();
    });
}

ScheduleBatch::~ScheduleBatch() {
    if (--list_.openBatches_ == 0 && list_.changedInBatch_)
        list_.notifyChanged();
}

void ScheduleList::addObserver(ScheduleObserver& observer) {
    observers_.push_back(&observer);
}

void ScheduleList::removeObserver(ScheduleObserver& observer) {
    std::erase(observers_, &observer);
}

bool ScheduleList::observersHaveRoomFor(std::size_t count) {
    try {
        for (ScheduleObserver* const observer : observers_)
            observer->makeRoom(count);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace scheduler
