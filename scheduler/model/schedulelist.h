#pragma once

#include "scheduler/model/scheduledproject.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace scheduler {

/// Notified in the order of registration. Not owned; must be removed before it is destroyed. Notices must not
/// fail or allocate, because the change has already happened.
class ScheduleObserver {
public:
    virtual ~ScheduleObserver() = default;

    /// Allocates what notices need for `count` entries. Called before a change; throwing prevents the change.
    virtual void makeRoom(std::size_t /*count*/) {}

    // Called as soon as positions change, so that data stored by position stays correct.

    /// The entries from `position` on moved up by one; `appended` if there were none.
    virtual void onEntryInserted(std::size_t /*position*/, bool /*appended*/) {}

    virtual void onEntriesLoaded(std::size_t /*count*/) {}

    /// `positions` are in descending order. The entries after each of them moved down by one.
    virtual void onEntriesRemoved(std::span<const std::size_t> /*positions*/) {}

    virtual void onCleared() {}

    /// The schedule is consistent again. Called after each change, or once at the end of a ScheduleBatch.
    virtual void onScheduleChanged() {}
};

/// The capacity to grow to: `neededCount` times 2 below 16384 bytes, times 1.5 below 131072, else times 1.25.
std::size_t grownCapacity(std::size_t neededCount, std::size_t recordSize);

/// Entries in order, identified by position. Changes notify the observers. For the user-interface thread.
class ScheduleList {
public:
    static constexpr std::ptrdiff_t noMemory = -1;

    ScheduleList() = default;
    ScheduleList(const ScheduleList&) = delete;
    ScheduleList& operator=(const ScheduleList&) = delete;

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    std::size_t capacity() const { return entries_.capacity(); }

    ScheduledProject& operator[](std::size_t position) { return entries_[position]; }
    const ScheduledProject& operator[](std::size_t position) const { return entries_[position]; }
    std::span<ScheduledProject> entries() { return entries_; }
    std::span<const ScheduledProject> entries() const { return entries_; }
    auto begin() { return entries_.begin(); }
    auto end() { return entries_.end(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    /// `position` is clamped to size(). Returns the position used, or noMemory with the schedule unchanged.
    std::ptrdiff_t insert(std::size_t position, ScheduledProject record);
    std::ptrdiff_t append(ScheduledProject record) { return insert(size(), std::move(record)); }

    void remove(std::size_t position);
    /// `positions` must be in descending order.
    void removeAll(const std::vector<std::size_t>& positions);
    void replace(std::size_t position, ScheduledProject record);
    void clear();

    /// Replaces the whole schedule. False, with no change, if an observer runs out of memory.
    [[nodiscard]] bool assign(std::vector<ScheduledProject> entries);

    /// Notifies the observers. Call after changing fields of entries.
    void notifyChanged();

    /// Whether an enabled entry has a next run, which would be missed if the program ended.
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

/// Defers onScheduleChanged to the end of the outermost batch. The list must outlive the batch.
class [[nodiscard]] ScheduleBatch {
public:
    explicit ScheduleBatch(ScheduleList& list) : list_(list) { ++list_.openBatches_; }
    ScheduleBatch(const ScheduleBatch&) = delete;
    ScheduleBatch& operator=(const ScheduleBatch&) = delete;
    ~ScheduleBatch();

    bool hasChanges() const { return list_.changedInBatch_; }

private:
    ScheduleList& list_;
};

} // namespace scheduler
