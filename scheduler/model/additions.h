#pragma once

#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <span>
#include <string>

namespace scheduler {

/// An entry that runs after the last one or, in an empty list, at start-up. Its time is the next full minute.
ScheduledProject newEntryTemplate(const ScheduleList& list, base::TimeValue now);

/// Computes the next run, appends the record and saves. If memory runs out, nothing is appended or saved.
void addEntry(ScheduleList& list, ScheduledProject record, const EngineState& state, const base::Clock& clock,
              ScheduleStore& store);

/// Adds a copy of `pattern` for each file and saves after each one. The first file is a full path; the others
/// are names in the same folder. A file for which memory runs out is skipped.
void addEntries(ScheduleList& list, const ScheduledProject& pattern, std::span<const std::string> names,
                const EngineState& state, const base::Clock& clock, ScheduleStore& store);

} // namespace scheduler
