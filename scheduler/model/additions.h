#pragma once

#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <span>
#include <string>

namespace scheduler {

/// Defaults for the editor: follows the schedule's last entry, or runs at start-up if it is the first. The
/// time is `now` plus 60 seconds, rounded down to the minute.
ScheduledProject newEntryTemplate(const ScheduleList& list, base::TimeValue now);

/// Computes the next run, appends the record and saves. If memory runs out, does neither.
void addEntry(ScheduleList& list, ScheduledProject record, const EngineState& state, const base::Clock& clock,
              ScheduleStore& store);

/// Adds a copy of `pattern` for each file and saves after each. The first name is a full path, the others are
/// names in its folder. A file for which memory runs out is skipped.
void addEntries(ScheduleList& list, const ScheduledProject& pattern, std::span<const std::string> names,
                const EngineState& state, const base::Clock& clock, ScheduleStore& store);

} // namespace scheduler
