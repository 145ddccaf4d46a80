#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace scheduler {

/// Removes the entries at `positions` (any order, no duplicates). Entries that followed a removed entry then
/// follow its predecessor. An entry that would follow itself runs at start-up.
void deleteEntries(ScheduleList& list, std::vector<std::size_t> positions);

} // namespace scheduler
