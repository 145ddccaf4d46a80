// The schedule: entries in order, referred to by position.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace scheduler {

/// What a deletion makes of references to entries, such as `afterIndex`.
class MovedReferences {
public:
    virtual ~MovedReferences() = default;

    /// What a reference is now that was `before`. Takes no memory.
    virtual std::int32_t now(std::int32_t before) const = 0;
};

/// Told of what comes into the schedule and what goes. Not an owner, and must outlive its place in the list
/// of observers. What it is told has happened already, and takes no memory: it can be relied on to arrive,
/// and must not fail.
class ScheduleObserver {
public:
    virtual ~ScheduleObserver() = default;

    /// The schedule is about to hold `count` entries. Whoever keeps something for each of them takes the
    /// memory now: without it (std::bad_alloc) nothing comes into the schedule.
    virtual void makeRoom(std::size_t /*count*/) {}

    /// An entry stands at `position` now; those behind it moved up. `becameLast`: it is the last one.
    virtual void onEntryInserted(std::size_t position, bool becameLast) = 0;

    /// The entries at positions 0 to count - 1 are new.
    virtual void onEntriesLoaded(std::size_t count) = 0;

    /// The entries that stood at `positions`, which descend, are gone; those behind each moved down.
    virtual void onEntriesRemoved(std::span<const std::size_t> /*positions*/) {}

    /// Those of all entries that are left have moved.
    virtual void onReferencesMoved(const MovedReferences& /*moved*/) {}

    /// All are gone.
    virtual void onCleared() {}
};

/// How many records an array is grown to that has to hold `neededCount` of `recordSize` bytes: twice as many
/// while these take less than 16384 bytes, half as many again below 131072 bytes, a quarter as many again
/// above.
std::size_t grownCapacity(std::size_t neededCount, std::size_t recordSize);

/// Holds its records by value. For the user-interface thread.
class ScheduleList {
public:
    static constexpr std::ptrdiff_t noMemory = -1;

    ScheduleList() = default;
    ScheduleList(const ScheduleList&) = delete;
    ScheduleList& operator=(const ScheduleList&) = delete;

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    std::size_t capacity() const { return entries_.capacity(); }

    /// Positions must be below size().
    ScheduledProject& operator[](std::size_t position) { return entries_[position]; }
    const ScheduledProject& operator[](std::size_t position) const { return entries_[position]; }
    std::span<ScheduledProject> entries() { return entries_; }
    std::span<const ScheduledProject> entries() const { return entries_; }
    auto begin() { return entries_.begin(); }
    auto end() { return entries_.end(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    /// Puts a record before the one at `position`, or at the end when there is none, and tells the observers.
    /// The position used, or noMemory with the schedule unchanged.
    std::ptrdiff_t insert(std::size_t position, ScheduledProject record);
    std::ptrdiff_t append(ScheduledProject record) { return insert(size(), std::move(record)); }

    // Removals tell the observers, too.

    void remove(std::size_t position);
    /// Removes the entries at `positions`, which descend, in one sweep.
    void removeAll(const std::vector<std::size_t>& positions);
    /// From whoever has moved those of the entries.
    void tellReferencesMoved(const MovedReferences& moved);
    void replace(std::size_t position, ScheduledProject record);
    void clear();

    /// Takes over a whole schedule, as a load does, and tells the observers. False, with the schedule
    /// unchanged, when these have no memory for it.
    [[nodiscard]] bool assign(std::vector<ScheduledProject> entries);

    void addObserver(ScheduleObserver& observer);
    void removeObserver(ScheduleObserver& observer);

private:
    [[nodiscard]] bool observersHaveRoomFor(std::size_t count);
    template<class Notice>
    void notify(const Notice& notice);

    std::vector<ScheduledProject> entries_;
    std::vector<ScheduleObserver*> observers_; ///< null where one has left
};

} // namespace scheduler
