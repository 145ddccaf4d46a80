#pragma once

#include "scheduler/model/scheduledproject.h"

namespace scheduler {

/// Copies the fields that the user edits. Keeps what the engine recorded in `entry`, and the next run, which
/// the caller must recompute. Allocates nothing, so that an entry is never half edited.
void applyEdit(ScheduledProject& entry, ScheduledProject edited);

} // namespace scheduler
