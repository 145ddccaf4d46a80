#include "scheduler/model/scheduledproject.h"

namespace scheduler {

void resetRunState(ScheduledProject& entry) {
    entry.running = 0;
    entry.waitingSince = base::TimeValue();
    entry.runStart = base::TimeValue();
    entry.runNumber = 0;
    entry.retriesDone = 0;
}

} // namespace scheduler
