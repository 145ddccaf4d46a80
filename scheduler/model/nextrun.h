#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/scheduledproject.h"

#include <optional>

namespace scheduler {

struct EngineState {
    /// True only while the program starts at log-on.
    bool startupFlag = false;
    bool suspended = false;
};

/// When the entry is next due: TimeValue() means at once, TimeValue::never() never. An entry that follows
/// another gets never(), because the engine sets its time when the other one has finished. Daily and monthly
/// rules take the date from `clock`. Days have 86400 seconds, on purpose: across a daylight saving change, a
/// daily or monthly run is an hour off.
base::TimeValue computeNextRun(const EngineState& state, const ScheduledProject& entry, base::TimeValue now,
                               const base::Clock& clock);

/// Computes next runs for one moment. Caches the clock's time and its calendar conversions, which are slow.
class NextRuns {
public:
    NextRuns(const EngineState& state, base::TimeValue now, const base::Clock& clock)
        : state_(state), now_(now), clock_(clock) {}

    base::TimeValue of(const ScheduledProject& entry);

private:
    base::TimeValue hourly(const ScheduledProject& entry);
    base::TimeValue daily(const ScheduledProject& entry);
    base::TimeValue monthly(const ScheduledProject& entry);

    /// The clock's local date and time; now_ can differ.
    const base::LocalTime& date();
    base::TimeValue cachedStart(std::optional<base::TimeValue>& start,
                                base::TimeValue (*startOf)(const base::LocalTime&));

    struct Hour {
        base::TimeValue start;
        int minute;
    };

    EngineState state_;
    base::TimeValue now_;
    const base::Clock& clock_;
    std::optional<Hour> hour_;
    std::optional<base::LocalTime> date_;
    std::optional<base::TimeValue> today_;
    std::optional<base::TimeValue> thisMonth_;
    std::optional<base::TimeValue> nextMonth_;
};

/// The local time of day; 0 if `t` is negative.
base::TimeSpan timeOfDay(base::TimeValue t);

base::TimeValue localMidnight(base::TimeValue t);

base::TimeValue hourStart(base::TimeValue t);

base::TimeValue monthStart(const base::Clock& clock);

base::TimeValue nextMonthStart(const base::Clock& clock);

} // namespace scheduler
