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
        // No memory, or more records than the address space holds.
        return noMemory;
    }
    // Those behind move up in one sweep, by their move constructor: a short string holds its text within
    // itself, so its bytes cannot just be copied elsewhere.
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(position), std::move(record));
    const bool becameLast = position + 1 == entries_.size();
    notify([=](ScheduleObserver& observer) { observer.onEntryInserted(position, becameLast); });
    return static_cast<std::ptrdiff_t>(position);
}

void ScheduleList::remove(std::size_t position) {
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(position));
    notify([&](ScheduleObserver& observer) { observer.onEntriesRemoved({&position, 1}); });
}

void ScheduleList::removeAll(const std::vector<std::size_t>& positions) {
    if (positions.empty())
        return;
    // What stays moves down over the gaps, from the lowest position removed to the end.
    auto removed = positions.rbegin();
    std::size_t kept = *removed;
    for (std::size_t position = kept; position < entries_.size(); ++position) {
        if (removed != positions.rend() && *removed == position)
            ++removed;
        else
            entries_[kept++] = std::move(entries_[position]);
    }
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(kept), entries_.end());
    notify([&](ScheduleObserver& observer) { observer.onEntriesRemoved(positions); });
}

void ScheduleList::tellReferencesMoved(const MovedReferences& moved) {
    notify([&](ScheduleObserver& observer) { observer.onReferencesMoved(moved); });
}

void ScheduleList::clear() {
    entries_.clear();
    notify([](ScheduleObserver& observer) { observer.onCleared(); });
}

void ScheduleList::replace(std::size_t position, ScheduledProject record) {
    entries_[position] = std::move(record);
}

bool ScheduleList::assign(std::vector<ScheduledProject> entries) {
    if (!observersHaveRoomFor(entries.size()))
        return false;
    entries_ = std::move(entries);
    notify([count = entries_.size()](ScheduleObserver& observer) { observer.onEntriesLoaded(count); });
    return true;
}

void ScheduleList::addObserver(ScheduleObserver& observer) {
    const auto vacant = std::ranges::find(observers_, nullptr);
    if (vacant != observers_.end())
        *vacant = &observer;
    else
        observers_.push_back(&observer);
}

void ScheduleList::removeObserver(ScheduleObserver& observer) {
    // Its place stays, vacant: an observer may take itself off the list while it is told.
    std::ranges::replace(observers_, &observer, nullptr);
}

bool ScheduleList::observersHaveRoomFor(std::size_t count) {
    try {
        notify([count](ScheduleObserver& observer) { observer.makeRoom(count); });
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

template<class Notice>
void ScheduleList::notify(const Notice& notice) {
    // Takes no memory: what is told has happened and cannot fail any more.
    const std::size_t count = observers_.size();
    for (std::size_t i = 0; i < count; ++i)
        if (ScheduleObserver* const observer = observers_[i])
            notice(*observer);
}

} // namespace scheduler
