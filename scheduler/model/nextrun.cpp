#include "scheduler/model/nextrun.h"

#include <algorithm>

namespace scheduler {

using base::LocalTime;
using base::TimeSpan;
using base::TimeValue;

namespace {

constexpr TimeSpan oneHour = TimeSpan::fromMinutes(60);
// Always 86400 seconds, even across daylight saving changes.
constexpr TimeSpan oneDay = TimeSpan::fromDays(1);

TimeValue fromLocalDate(int year, int month, int day, int hour = 0) {
    return TimeValue::fromLocal(year, month, day, hour, 0, 0, -1);
}

TimeValue startOfHour(const LocalTime& local) {
    return fromLocalDate(local.year, local.month, local.day, local.hour);
}

TimeValue startOfDay(const LocalTime& local) {
    return fromLocalDate(local.year, local.month, local.day);
}

TimeValue startOfMonth(const LocalTime& local) {
    return fromLocalDate(local.year, local.month, 1);
}

TimeValue startOfNextMonth(const LocalTime& local) {
    return fromLocalDate(local.year, local.month + 1, 1); // month 13 rolls over into January
}

/// True only if `midnight` + `sinceMidnight` + n * 86400 seconds is on the n-th date after `midnight`, for n
/// from 0 to 8. Daylight saving changes are at most two hours, so only times within two hours of midnight can
/// fall on another date.
bool datesCanBeCounted(TimeValue midnight, TimeSpan sinceMidnight) {
    constexpr TimeSpan twoHours = TimeSpan::fromMinutes(120);
    // `midnight` is 0 if it cannot be represented. Sums beyond the range wrap around.
    return TimeValue() < midnight && midnight < midnight + TimeSpan::fromDays(9) &&
           twoHours <= sinceMidnight && sinceMidnight + twoHours < oneDay;
}

} // namespace

/// For the kinds that need the calendar. External linkage and noinline keep the other kinds fast.
[[gnu::noinline]] TimeValue nextRunByCalendar(const EngineState& state, const ScheduledProject& entry,
                                              TimeValue now, const base::Clock& clock) {
    return NextRuns(state, now, clock).of(entry);
}

TimeValue computeNextRun(const EngineState& state, const ScheduledProject& entry, TimeValue now,
                         const base::Clock& clock) {
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        return TimeValue::never();
    case ScheduleKind::AtStartup:
        // The entry's delay is shown to the user but not applied: the entry starts at the first tick.
        return state.startupFlag ? TimeValue() : TimeValue::never();
    case ScheduleKind::Hourly:
    case ScheduleKind::Daily:
    case ScheduleKind::Monthly:
        return nextRunByCalendar(state, entry, now, clock);
    case ScheduleKind::Once:
        // Unlike a daily or monthly time, a "just once" time that equals `now` has passed.
        return now < entry.time ? entry.time : TimeValue::never();
    }
    return TimeValue::never();
}

TimeValue NextRuns::of(const ScheduledProject& entry) {
    switch (entry.kind) {
    case ScheduleKind::Hourly:
        return hourly(entry);
    case ScheduleKind::Daily:
        return daily(entry);
    case ScheduleKind::Monthly:
        return monthly(entry);
    case ScheduleKind::AfterProject:
    case ScheduleKind::AtStartup:
    case ScheduleKind::Once:
        break;
    }
    return computeNextRun(state_, entry, now_, clock_);
}

TimeValue NextRuns::hourly(const ScheduledProject& entry) {
    if (!hour_) {
        const LocalTime local = now_.local();
        hour_ = Hour{startOfHour(local), local.minute};
    }
    const TimeValue candidate = hour_->start + TimeSpan::fromMinutes(entry.minutes);
    // The run counts as past from the start of its minute.
    return hour_->minute >= entry.minutes ? candidate + oneHour : candidate;
}

TimeValue NextRuns::daily(const ScheduledProject& entry) {
    const TimeSpan sinceMidnight = timeOfDay(entry.time);
    const TimeValue today = cachedStart(today_, startOfDay);
    const TimeValue candidate = today + sinceMidnight;
    const bool counted = datesCanBeCounted(today, sinceMidnight);
    // The flags start with Monday, dayOfWeek with Sunday.
    const auto runsAfter = [&](int days) {
        const int weekday =
            counted ? date().dayOfWeek + days : (candidate + TimeSpan::fromDays(days)).dayOfWeek();
        return entry.weekdays[static_cast<std::size_t>(weekday + 6) % 7] != 0;
    };
    // A candidate that equals `now` is due. To reach `now`, at most one day is added. In the last hour of the
    // 25-hour autumn day, the result can still be before `now`: the entry then runs repeatedly until
    // midnight.
    const int first = candidate < now_ ? 1 : 0;
    int days = first;
    // If no weekday is set, the result is a week after the first candidate.
    while (days < first + 7 && !runsAfter(days))
        ++days;
    return candidate + TimeSpan::fromDays(days);
}

TimeValue NextRuns::monthly(const ScheduledProject& entry) {
    // The day is not clamped to the month's length: day 31 of a 30-day month is the 1st of the next month. A
    // day below 1 is day 1.
    const TimeSpan offset = TimeSpan::fromDays(std::max(entry.dayOfMonth, 1) - 1) + timeOfDay(entry.time);
    const TimeValue candidate = cachedStart(thisMonth_, startOfMonth) + offset;
    return candidate >= now_ ? candidate : cachedStart(nextMonth_, startOfNextMonth) + offset;
}

const LocalTime& NextRuns::date() {
    return date_ ? *date_ : date_.emplace(clock_.now().local());
}

TimeValue NextRuns::cachedStart(std::optional<TimeValue>& start, TimeValue (*startOf)(const LocalTime&)) {
    return start ? *start : start.emplace(startOf(date()));
}

TimeSpan timeOfDay(TimeValue t) {
    const LocalTime local = t.local();
    return TimeSpan::fromSeconds(local.second + (local.hour * 60 + local.minute) * 60);
}

TimeValue localMidnight(TimeValue t) {
    return startOfDay(t.local());
}

TimeValue hourStart(TimeValue t) {
    return startOfHour(t.local());
}

TimeValue monthStart(const base::Clock& clock) {
    return startOfMonth(clock.now().local());
}

TimeValue nextMonthStart(const base::Clock& clock) {
    return startOfNextMonth(clock.now().local());
}

} // namespace scheduler
