#include "scheduler/model/edits.h"

#include <utility>

namespace scheduler {

void applyEdit(ScheduledProject& entry, ScheduledProject edited) {
    entry.path = std::move(edited.path);
    entry.kind = edited.kind;
    entry.time = edited.time;
    entry.minutes = edited.minutes;
    entry.afterIndex = edited.afterIndex;
    entry.weekdays = edited.weekdays;
    entry.dayOfMonth = edited.dayOfMonth;
    entry.runCommand = edited.runCommand;
    entry.dialupEntry = std::move(edited.dialupEntry);
    entry.timeLimitMinutes = edited.timeLimitMinutes;
    entry.disconnectWhenDone = edited.disconnectWhenDone;
}

} // namespace scheduler
