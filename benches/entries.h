#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace bench {

/// The time of the first call. The times of entries are relative to it.
base::TimeValue referenceTime();

/// Realistic entries of all kinds. Their next runs are at least two hours after referenceTime().
std::vector<scheduler::ScheduledProject> manyEntries(std::size_t count);

/// Saves to the schedule file. Throws on failure.
void saveForBench(const scheduler::ScheduleList& list);

} // namespace bench
