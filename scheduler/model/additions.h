// New entries: their defaults, and how they join the schedule.
#pragma once

#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"

#include <span>
#include <string>

namespace scheduler {

/// A record for the editor to start from: it follows the schedule's last entry, or runs at start-up when it
/// is the first. Its time is the whole minute that `now` plus 60 seconds lies in.
ScheduledProject newEntryTemplate(const ScheduleList& list, base::TimeValue now);

/// Computes the record's next run from the state's clock, appends it and saves the schedule. False when
/// memory cannot be had or the save failed.
[[nodiscard]] bool addEntry(ScheduleList& list, ScheduledProject record, const EngineState& state,
                            ScheduleStore& store);

/// Adds one copy of `pattern` for each of the chosen files, one save per entry. The first name is a full
/// path; each later one is a name within the first one's folder and is joined to it by one more backslash
/// than the folder already ends in, which the file system accepts. False when adding one of them failed; the
/// others are added.
[[nodiscard]] bool addEntries(ScheduleList& list, const ScheduledProject& pattern,
                              std::span<const std::string> names, const EngineState& state,
                              ScheduleStore& store);

} // namespace scheduler
