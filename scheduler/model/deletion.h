#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace scheduler {

/// Removes the entries at `positions` (any order, no duplicates). Followers of a removed entry follow its
/// predecessor; an entry that would then follow itself runs at start-up.
void deleteEntries(ScheduleList& list, std::vector<std::size_t> positions);

} // namespace scheduler
