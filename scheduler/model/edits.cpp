#include "scheduler/model/edits.h"

namespace scheduler {

void applyEdit(ScheduledProject& entry, const ScheduledProject& edited) {
    entry.path = edited.path;
    entry.kind = edited.kind;
    entry.time = edited.time;
    entry.minutes = edited.minutes;
    entry.afterIndex = edited.afterIndex;
    entry.weekdays = edited.weekdays;
    entry.dayOfMonth = edited.dayOfMonth;
    entry.runCommand = edited.runCommand;
    entry.dialupEntry = edited.dialupEntry;
    entry.timeLimitMinutes = edited.timeLimitMinutes;
    entry.disconnectWhenDone = edited.disconnectWhenDone;
}

} // namespace scheduler
