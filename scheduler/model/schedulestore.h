#pragma once

namespace scheduler {

class ScheduleList;

class ScheduleStore {
public:
    virtual ~ScheduleStore() = default;

    /// Handles its own failures: the schedule in memory stays valid, and the next save tries again.
    virtual void save(const ScheduleList& list) = 0;
};

} // namespace scheduler
