// Converts between the program's entries and plain items.
#pragma once

#include "scheduler/model/scheduledproject.h"
#include "tests/support/plainitem.h"

#include <cstdint>

namespace plain {

inline Item itemOf(const scheduler::ScheduledProject& entry) {
    Item item;
    item.path = entry.path;
    item.result = entry.lastResult;
    item.lastRun = entry.lastRun.seconds();
    item.kind = static_cast<int>(entry.kind);
    item.time = entry.time.seconds();
    item.minutes = entry.minutes;
    item.after = entry.afterIndex;
    item.days = entry.weekdays;
    item.dayOfMonth = entry.dayOfMonth;
    item.command = static_cast<int>(entry.runCommand);
    item.dialup = entry.dialupEntry;
    item.timeLimit = entry.timeLimitMinutes;
    item.hangsUp = entry.disconnectWhenDone;
    item.off = entry.disabled;
    item.runs = entry.running;
    item.waitsSince = entry.waitingSince.seconds();
    item.began = entry.runStart.seconds();
    item.number = entry.runNumber;
    item.next = entry.nextRun.seconds();
    item.retries = entry.retryLimit;
    item.retried = entry.retriesDone;
    item.retryMinutes = entry.retryIntervalMinutes;
    return item;
}

/// Copies only the path, the schedule, the disabled flag and the retries.
inline scheduler::ScheduledProject entryOf(const Item& item) {
    scheduler::ScheduledProject entry;
    entry.path = item.path;
    entry.kind = static_cast<scheduler::ScheduleKind>(item.kind);
    entry.time = base::TimeValue(static_cast<std::int32_t>(item.time));
    entry.minutes = item.minutes;
    entry.afterIndex = item.after;
    entry.weekdays = item.days;
    entry.dayOfMonth = item.dayOfMonth;
    entry.disabled = item.off;
    entry.retryLimit = item.retries;
    entry.retryIntervalMinutes = item.retryMinutes;
    return entry;
}

} // namespace plain
