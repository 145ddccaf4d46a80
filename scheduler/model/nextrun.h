// When an entry is next due.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/scheduledproject.h"

#include <optional>

namespace scheduler {

/// What next runs and descriptions need to know of the engine.
struct EngineState {
    /// True only while the schedule is first evaluated after the system started the program at log-on.
    bool startupFlag = false;
    bool suspended = false;
};

/// The entry's next occasion as seen at `now`: TimeValue() is at once, TimeValue::never() is not at all. An
/// entry that follows another gets never: the engine sets its time when that one has finished. The daily and
/// the monthly rule also read the clock.
///
/// Days are added as 86400 seconds each, not by the calendar: behind a change to or from daylight saving time
/// a daily or monthly occasion lies an hour off its time of day. That is how the schedule is meant to work.
base::TimeValue computeNextRun(const EngineState& state, const ScheduledProject& entry, base::TimeValue now,
                               const base::Clock& clock);

/// Next runs as seen at one moment. The clock and the calendar take longer than the rest of a rule: each is
/// asked when an entry first needs the answer, and the answer is kept for the entries that follow.
class NextRuns {
public:
    /// The clock must outlive this object.
    NextRuns(const EngineState& state, base::TimeValue now, const base::Clock& clock)
        : state_(state), now_(now), clock_(clock) {}

    /// What computeNextRun gives for the entry.
    base::TimeValue of(const ScheduledProject& entry);

private:
    base::TimeValue hourly(const ScheduledProject& entry);
    base::TimeValue daily(const ScheduledProject& entry);
    base::TimeValue monthly(const ScheduledProject& entry);

    /// The local date and time of the clock, which need not be those of now_.
    const base::LocalTime& date();
    /// Computes `start` from the clock's date on first use.
    base::TimeValue filled(std::optional<base::TimeValue>& start,
                           base::TimeValue (*startOf)(const base::LocalTime&));

    struct Hour {
        base::TimeValue start;
        int minute; ///< how many of its minutes have passed
    };

    EngineState state_;
    base::TimeValue now_;
    const base::Clock& clock_;
    std::optional<Hour> hour_; ///< that of now_
    std::optional<base::LocalTime> date_;
    std::optional<base::TimeValue> today_;
    std::optional<base::TimeValue> thisMonth_;
    std::optional<base::TimeValue> nextMonth_;
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
