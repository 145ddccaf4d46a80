// Schedules to measure with.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace bench {

/// The moment that the entries' times lie around.
base::TimeValue referenceTime();

/// Entries of all kinds, with paths, results and dial-up entries as users have them. None is due at
/// referenceTime() or for an hour after it.
std::vector<scheduler::ScheduledProject> manyEntries(std::size_t count);

/// Saves to the schedule file. Throws when that fails: nothing could be measured then.
void saveForBench(const scheduler::ScheduleList& list);

} // namespace bench
