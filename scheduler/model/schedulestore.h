// Where a changed schedule is saved, as seen by the code that changes it.
#pragma once

namespace scheduler {

class ScheduleList;

class ScheduleStore {
public:
    virtual ~ScheduleStore() = default;

    /// A failure is the store's to handle: the schedule in memory is right, and the next save tries again.
    virtual void save(const ScheduleList& list) = 0;
};

} // namespace scheduler
