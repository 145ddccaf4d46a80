// How an edited record becomes part of its entry.
#pragma once

#include "scheduler/model/scheduledproject.h"

namespace scheduler {

/// Takes over from `edited`, a copy that the user has worked on, exactly what a user sets. Whatever the
/// engine has recorded in `entry` since the copy was made stays, and so does the next run: the caller
/// computes it anew. Takes no memory: an entry is never left half edited.
void applyEdit(ScheduledProject& entry, ScheduledProject edited);

} // namespace scheduler
