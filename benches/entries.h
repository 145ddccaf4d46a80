// Schedules for the benchmarks.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace bench {

/// Program start. The times of the entries lie around this time.
base::TimeValue referenceTime();

/// Realistic entries of all kinds. None is due until an hour after referenceTime().
std::vector<scheduler::ScheduledProject> manyEntries(std::size_t count);

/// Saves to the schedule file. Throws when that fails.
void saveForBench(const scheduler::ScheduleList& list);

} // namespace bench
