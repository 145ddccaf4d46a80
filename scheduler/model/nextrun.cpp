#include "scheduler/model/nextrun.h"

#include <algorithm>

namespace scheduler {

using base::LocalTime;
using base::TimeSpan;
using base::TimeValue;

namespace {

constexpr TimeSpan oneHour = TimeSpan::fromMinutes(60);
// Days are steps of 86400 seconds here and below, whatever daylight saving time does to the calendar's days.
constexpr TimeSpan oneDay = TimeSpan::fromDays(1);

TimeSpan secondsOfDay(const LocalTime& local) {
    return TimeSpan::fromSeconds(local.second + (local.hour * 60 + local.minute) * 60);
}

TimeValue fromLocalDate(int year, int month, int day, int hour = 0) {
    return TimeValue::fromLocal(year, month, day, hour, 0, 0, -1);
}

TimeValue startOfHour(const LocalTime& local) {
    return fromLocalDate(local.year, local.month, local.day, local.hour);
}

// The rules that need the calendar stay functions of their own: taken into computeNextRun, their stack frame
// would cost more than all that the other kinds do.
[[gnu::noinline]] TimeValue nextHourlyRun(const ScheduledProject& entry, TimeValue now) {
    const LocalTime local = now.local();
    const TimeValue candidate = startOfHour(local) + TimeSpan::fromMinutes(entry.minutes);
    // At the very minute the hour's occasion is over: it was due when the minute began.
    return local.minute >= entry.minutes ? candidate + oneHour : candidate;
}

/// Whether the flag of the candidate's local weekday is set. The flags begin with Monday.
bool runsOnWeekdayOf(const ScheduledProject& entry, TimeValue candidate) {
    const auto sundayFirst = static_cast<std::size_t>(candidate.dayOfWeek());
    return entry.weekdays[(sundayFirst + 6) % 7] != 0;
}

[[gnu::noinline]] TimeValue nextDailyRun(const EngineState& state, const ScheduledProject& entry,
                                         TimeValue now) {
    TimeValue candidate = localMidnight(state.clock->now()) + timeOfDay(entry.time);
    // One day is added at most: in the night of the autumn change, whose day has 25 hours, the result can
    // still be earlier than now, and the entry is due again until midnight. A candidate that equals now
    // stays: it is due.
    if (candidate < now)
        candidate = candidate + oneDay;
    // Without any flag the last candidate stands, a week on.
    for (int added = 0; added < 7 && !runsOnWeekdayOf(entry, candidate); ++added)
        candidate = candidate + oneDay;
    return candidate;
}

[[gnu::noinline]] TimeValue nextMonthlyRun(const EngineState& state, const ScheduledProject& entry,
                                           TimeValue now) {
    // The day is not clamped to the month's length: day 31 of a month of 30 days is the 1st of the next one.
    // Day 0 and less is day 1.
    const TimeSpan offset = TimeSpan::fromDays(std::max(entry.dayOfMonth, 1) - 1) + timeOfDay(entry.time);
    const TimeValue candidate = monthStart(*state.clock) + offset;
    return candidate >= now ? candidate : nextMonthStart(*state.clock) + offset;
}

} // namespace

TimeValue computeNextRun(const EngineState& state, const ScheduledProject& entry, TimeValue now) {
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        return TimeValue::never();
    case ScheduleKind::AtStartup:
        // The delay in minutes is shown to the user, but not waited for: these entries start at the first
        // tick.
        return state.startupFlag ? TimeValue() : TimeValue::never();
    case ScheduleKind::Hourly:
        return nextHourlyRun(entry, now);
    case ScheduleKind::Daily:
        return nextDailyRun(state, entry, now);
    case ScheduleKind::Monthly:
        return nextMonthlyRun(state, entry, now);
    case ScheduleKind::Once:
        // Unlike a daily or a monthly occasion, one that equals now has passed.
        return now < entry.time ? entry.time : TimeValue::never();
    }
    return TimeValue::never();
}

TimeSpan timeOfDay(TimeValue t) {
    return secondsOfDay(t.local());
}

TimeValue localMidnight(TimeValue t) {
    const LocalTime local = t.local();
    return fromLocalDate(local.year, local.month, local.day);
}

TimeValue hourStart(TimeValue t) {
    return startOfHour(t.local());
}

TimeValue monthStart(const base::Clock& clock) {
    const LocalTime local = clock.now().local();
    return fromLocalDate(local.year, local.month, 1);
}

TimeValue nextMonthStart(const base::Clock& clock) {
    const LocalTime local = clock.now().local();
    const bool december = local.month == 12;
    return fromLocalDate(december ? local.year + 1 : local.year, december ? 1 : local.month + 1, 1);
}

} // namespace scheduler
