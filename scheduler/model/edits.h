#pragma once

#include "scheduler/model/scheduledproject.h"

namespace scheduler {

/// Copies the fields that the user can edit. The others stay unchanged; the caller must recompute the
/// next run. Allocates nothing, so that an entry is never half edited.
void applyEdit(ScheduledProject& entry, ScheduledProject edited);

} // namespace scheduler
