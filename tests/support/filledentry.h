// An entry whose fields differ from their defaults and from each other.
#pragma once

#include "scheduler/model/scheduledproject.h"

namespace test {

inline scheduler::ScheduledProject filledEntry() {
    scheduler::ScheduledProject entry;
    entry.path = "C:\\Sites\\news.kra";
    entry.lastResult = "2 errors";
    entry.lastRun = base::TimeValue(0x11121314);
    entry.kind = scheduler::ScheduleKind::Monthly;
    entry.time = base::TimeValue(0x21222324);
    entry.minutes = -2;
    entry.afterIndex = 0x31323334;
    entry.weekdays = {0, 1, 0, 0, 1, 1, 0};
    entry.dayOfMonth = 31;
    entry.runCommand = scheduler::RunCommand::RunCompleteRefresh;
    entry.dialupEntry = "Office line";
    entry.timeLimitMinutes = 90;
    entry.disconnectWhenDone = 1;
    entry.disabled = 2;
    entry.running = 3;
    entry.waitingSince = base::TimeValue(0x41424344);
    entry.runStart = base::TimeValue(0x51525354);
    entry.runNumber = 0x61626364;
    entry.nextRun = base::TimeValue::never();
    entry.retryLimit = 0xF1F2F3F4;
    entry.retriesDone = 0xE1E2E3E4;
    entry.retryIntervalMinutes = 0x71727374;
    return entry;
}

} // namespace test
