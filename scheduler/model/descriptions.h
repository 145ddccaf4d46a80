#pragma once

#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulelist.h"

#include <string>

namespace scheduler {

/// A project file's name without folder and extension, or the whole command line with its prefix.
std::string displayName(const ScheduledProject& entry);

/// The name of the entry that `entry` follows; "(unknown)" if there is none.
std::string followedName(const ScheduledProject& entry, const ScheduleList& schedule);

/// For instance "every Mon/Wed at 8:00 PM".
std::string describeSchedule(const ScheduledProject& entry, const ScheduleList& schedule);

/// For instance "Run update only for up to 90 minutes via Office line; disconnect when done".
std::string describeRun(const ScheduledProject& entry);

/// For instance "tomorrow at 8:00 PM" or "Now".
std::string describeNextRun(const ScheduledProject& entry, const ScheduleList& schedule,
                            const EngineState& state, const base::Clock& clock);

/// "Never" or a time relative to `now`. The clock is read only if needed.
std::string describeLastRun(const ScheduledProject& entry, base::TimeValue now);
std::string describeLastRun(const ScheduledProject& entry, const base::Clock& clock);

/// When phrases made at `now` become outdated even if the entry does not change; at most 15 minutes later.
base::TimeValue phrasesValidUntil(const ScheduledProject& entry, base::TimeValue now);

} // namespace scheduler
