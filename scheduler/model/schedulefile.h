// Where the schedule is kept: `schedule.dat` in the Windows directory.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <cstdint>
#include <string>

namespace scheduler {

/// Empty when the platform does not tell where Windows is: a schedule is then neither loaded nor saved.
std::string schedulePath();

/// Writes the whole file. False when a step failed; a partly written file is left as it is.
[[nodiscard]] bool saveSchedule(const ScheduleList& list);

/// Fills the list from the file, as decodeSchedule does. A missing or empty file is a failure that leaves the
/// list as it is.
[[nodiscard]] bool loadSchedule(ScheduleList& list, std::uint32_t expectedMagic);

/// Saves to schedulePath(). The one place that learns of a failed save.
class ScheduleFile : public ScheduleStore {
public:
    void save(const ScheduleList& list) override;
};

} // namespace scheduler
