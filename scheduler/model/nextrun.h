// When an entry is next due.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/scheduledproject.h"

namespace scheduler {

/// What next runs and descriptions need to know of the engine, which makes it anew whenever it is asked.
struct EngineState {
    /// True only while the schedule is first evaluated after the system started the program at log-on.
    bool startupFlag = false;
    bool suspended = false;
    const base::Clock* clock = &base::systemClock();
};

/// A local hour and how much of it has passed.
struct HourInProgress {
    base::TimeValue start;
    int minute = 0;
};

/// The entry's next occasion as seen at `now`: TimeValue() is at once, TimeValue::never() is not at all. An
/// entry that follows another gets never: the engine sets its time when that one has finished. The daily and
/// the monthly rule also read the state's clock.
///
/// Days are added as 86400 seconds each, not by the calendar: behind a change to or from daylight saving time
/// a daily or monthly occasion lies an hour off its time of day. That is how the schedule is meant to work.
base::TimeValue computeNextRun(const EngineState& state, const ScheduledProject& entry, base::TimeValue now);

/// Next runs of many entries as seen at one moment. The clock and the calendar, which take longer than the
/// rest of a rule, are asked for the moment once, when this is made, instead of for each entry.
class NextRunSweep {
public:
    NextRunSweep(const EngineState& state, base::TimeValue now);

    /// What computeNextRun gives for the entry.
    base::TimeValue nextRunOf(const ScheduledProject& entry) const;

    // What the rules ask of the moment: its hour, and the clock's day and months.
    bool startupFlag() const { return startupFlag_; }
    base::TimeValue now() const { return now_; }
    HourInProgress hour() const { return hour_; }
    base::TimeValue today() const { return today_; }
    base::TimeValue thisMonth() const { return thisMonth_; }
    base::TimeValue nextMonth() const { return nextMonth_; }

private:
    bool startupFlag_;
    base::TimeValue now_;
    HourInProgress hour_;
    base::TimeValue today_;
    base::TimeValue thisMonth_;
    base::TimeValue nextMonth_;
};

/// Seconds since local midnight; 0 when `t` is negative.
base::TimeSpan timeOfDay(base::TimeValue t);

/// The local date of `t` at 00:00:00.
base::TimeValue localMidnight(base::TimeValue t);

/// The local date and hour of `t` with minute and second 0.
base::TimeValue hourStart(base::TimeValue t);

/// Day 1 at 00:00:00 of the current local month.
base::TimeValue monthStart(const base::Clock& clock);

/// Day 1 at 00:00:00 of the month after the current local one.
base::TimeValue nextMonthStart(const base::Clock& clock);

} // namespace scheduler
