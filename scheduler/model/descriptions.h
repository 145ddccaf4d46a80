// The English phrases by which an entry is shown: its name, when it runs, how it runs, its next run.
#pragma once

#include "scheduler/model/nextrun.h"
#include "scheduler/model/schedulelist.h"

#include <string>

namespace scheduler {

/// The name of an entry, also in other entries' phrases: a project file's name without folder and extension,
/// or the whole text of a command line, prefix included.
std::string displayName(const ScheduledProject& entry);

/// The name of the entry that this one follows; "(unknown)" when there is none at that position.
std::string followedName(const ScheduledProject& entry, const ScheduleList& schedule);

/// When the entry runs, for instance "every Mon/Wed at 8:00 PM".
std::string describeSchedule(const ScheduledProject& entry, const ScheduleList& schedule);

/// How the entry runs, for instance "Run update only for up to 90 minutes via Office line; disconnect when
/// done".
std::string describeRun(const ScheduledProject& entry);

/// The entry's next run as seen at the clock's time, for instance "tomorrow at 8:00 PM" or "Now".
std::string describeNextRun(const ScheduledProject& entry, const ScheduleList& schedule,
                            const EngineState& state, const base::Clock& clock);

/// The entry's last run as seen at `now`, or at a clock that is read only if need be: "Never" or a time.
std::string describeLastRun(const ScheduledProject& entry, base::TimeValue now);
std::string describeLastRun(const ScheduledProject& entry, const base::Clock& clock);

/// Until when an entry's phrases as of `now` stay as they are, unless the entry changes: later than `now`, by
/// a quarter of an hour at most. Costs a fraction of making them, for it asks no calendar.
base::TimeValue phrasesHoldUntil(const ScheduledProject& entry, base::TimeValue now);

} // namespace scheduler
