#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace bench {

/// The time of its first call. The times of the entries are before and after it.
base::TimeValue referenceTime();

/// Realistic entries of all kinds. None is due until an hour after referenceTime().
std::vector<scheduler::ScheduledProject> manyEntries(std::size_t count);

/// Saves to the schedule file. Throws when that fails.
void saveForBench(const scheduler::ScheduleList& list);

} // namespace bench
