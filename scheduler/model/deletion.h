// Removing entries without breaking the chains of those that follow one another.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <cstddef>
#include <vector>

namespace scheduler {

/// An entry that follows itself would never run: it runs at start-up.
void breakSelfReference(ScheduledProject& entry, std::size_t position);

/// Removes the entries at `positions` (in any order, each at most once). Whatever followed a removed entry
/// follows that entry's own predecessor; an entry that would then follow itself runs at start-up.
void deleteEntries(ScheduleList& list, std::vector<std::size_t> positions);

} // namespace scheduler
