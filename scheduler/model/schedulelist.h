// The schedule: entries in order, referred to by position.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace scheduler {

/// Told of what happens to the schedule, in the order of registration. Not an owner; must be removed before
/// its end. Notices take no memory and must not fail: what they tell has happened.
class ScheduleObserver {
public:
    virtual ~ScheduleObserver() = default;

    /// The schedule is about to hold `count` entries. An observer that keeps something for each of them takes
    /// the memory now: if it cannot (std::bad_alloc), nothing comes into the schedule.
    virtual void makeRoom(std::size_t /*count*/) {}

    // Positions have changed; told at once, so that what is kept per position stays in step.

    /// An entry was inserted at `position`; those after it moved up. `becameLast`: it is the last one.
    virtual void onEntryInserted(std::size_t /*position*/, bool /*becameLast*/) {}

    /// The entries at positions 0 to count - 1 are new.
    virtual void onEntriesLoaded(std::size_t /*count*/) {}

    /// The entries at `positions`, in descending order, were removed; those after each moved down.
    virtual void onEntriesRemoved(std::span<const std::size_t> /*positions*/) {}

    virtual void onCleared() {}

    /// Entries were inserted, removed or changed, and the schedule is consistent again: time to show it. Told
    /// after each change, or once at the end of a ScheduleBatch.
    virtual void onScheduleChanged() {}
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

    // These tell the observers, too.

    void remove(std::size_t position);
    /// Removes the entries at `positions`, which descend, in one sweep.
    void removeAll(const std::vector<std::size_t>& positions);
    void replace(std::size_t position, ScheduledProject record);
    void clear();

    /// Takes over a whole schedule, as a load does, and tells the observers. False, with the schedule
    /// unchanged, when these have no memory for it.
    [[nodiscard]] bool assign(std::vector<ScheduledProject> entries);

    /// Call after changing fields of entries: tells the observers.
    void noteChange();

    /// Whether an enabled entry still has a next run, which would be missed if the program ended.
    bool hasPendingRun() const;

    void addObserver(ScheduleObserver& observer);
    void removeObserver(ScheduleObserver& observer);

private:
    friend class ScheduleBatch;

    [[nodiscard]] bool observersHaveRoomFor(std::size_t count);

    std::vector<ScheduledProject> entries_;
    std::vector<ScheduleObserver*> observers_;
    int openBatches_ = 0;
    bool changedInBatch_ = false;
};

/// Defers ScheduleObserver::onScheduleChanged to the end of the outermost batch, where it is told once if
/// anything changed meanwhile. The list must outlive the batch.
class [[nodiscard]] ScheduleBatch {
public:
    explicit ScheduleBatch(ScheduleList& list) : list_(list) { ++list_.openBatches_; }
    ScheduleBatch(const ScheduleBatch&) = delete;
    ScheduleBatch& operator=(const ScheduleBatch&) = delete;
    ~ScheduleBatch();

    /// Whether anything has changed since the outermost batch began.
    bool hasChanges() const { return list_.changedInBatch_; }

private:
    ScheduleList& list_;
};

} // namespace scheduler
