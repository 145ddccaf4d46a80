// Where a changed schedule is saved, as those see it who change it.
#pragma once

namespace scheduler {

class ScheduleList;

class ScheduleStore {
public:
    virtual ~ScheduleStore() = default;

    /// False when the schedule could not be saved whole.
    [[nodiscard]] virtual bool save(const ScheduleList& list) = 0;
};

} // namespace scheduler
