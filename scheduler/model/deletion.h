#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace scheduler {

/// Removes the entries at `positions` (any order, no duplicates). A follower of a removed entry then follows
/// the entry that the removed one followed. An entry that would follow itself runs at start-up.
void deleteEntries(ScheduleList& list, std::vector<std::size_t> positions);

} // namespace scheduler
