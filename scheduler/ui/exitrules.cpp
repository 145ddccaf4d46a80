#include "scheduler/ui/exitrules.h"

#include <algorithm>

namespace scheduler {

const char* const exitQuestion = "The Scheduler will not be able to launch projects if you exit.  You can "
                                 "choose \"Close\" to hide the main "
                                 "window and still leave the program active.  Are you sure you want to exit?";

bool hasPendingRun(const ScheduleList& schedule) {
    return std::ranges::any_of(schedule, [](const ScheduledProject& entry) {
        return !entry.disabled && entry.nextRun != base::TimeValue::never();
    });
}

} // namespace scheduler
