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

TimeValue startOfDay(const LocalTime& local) {
    return fromLocalDate(local.year, local.month, local.day);
}

HourInProgress hourInProgress(TimeValue t) {
    const LocalTime local = t.local();
    return {startOfHour(local), local.minute};
}

TimeValue startOfMonth(const LocalTime& local) {
    return fromLocalDate(local.year, local.month, 1);
}

TimeValue startOfNextMonth(const LocalTime& local) {
    const bool december = local.month == 12;
    return fromLocalDate(december ? local.year + 1 : local.year, december ? 1 : local.month + 1, 1);
}

/// The moment of one look at one entry: each rule asks the clock and the calendar for what it needs only.
class SingleLook {
public:
    SingleLook(const EngineState& state, TimeValue now) : state_(state), now_(now) {}

    bool startupFlag() const { return state_.startupFlag; }
    TimeValue now() const { return now_; }
    HourInProgress hour() const { return hourInProgress(now_); }
    TimeValue today() const { return localMidnight(state_.clock->now()); }
    TimeValue thisMonth() const { return monthStart(*state_.clock); }
    TimeValue nextMonth() const { return nextMonthStart(*state_.clock); }

private:
    const EngineState& state_;
    TimeValue now_;
};

// The rules, for a Moment that is a SingleLook or a NextRunSweep&. Those that need the calendar stay
// functions of their own: taken into nextRun, their stack frame would cost more than all that the other kinds
// do.
template<class Moment>
[[gnu::noinline]] TimeValue nextHourlyRun(Moment moment, const ScheduledProject& entry) {
    const HourInProgress hour = moment.hour();
    const TimeValue candidate = hour.start + TimeSpan::fromMinutes(entry.minutes);
    // At the very minute the hour's occasion is over: it was due when the minute began.
    return hour.minute >= entry.minutes ? candidate + oneHour : candidate;
}

/// Whether the flag of the candidate's local weekday is set. The flags begin with Monday.
bool runsOnWeekdayOf(const ScheduledProject& entry, TimeValue candidate) {
    const auto sundayFirst = static_cast<std::size_t>(candidate.dayOfWeek());
    return entry.weekdays[(sundayFirst + 6) % 7] != 0;
}

template<class Moment>
[[gnu::noinline]] TimeValue nextDailyRun(Moment moment, const ScheduledProject& entry) {
    TimeValue candidate = moment.today() + timeOfDay(entry.time);
    // One day is added at most: in the night of the autumn change, whose day has 25 hours, the result can
    // still be earlier than now, and the entry is due again until midnight. A candidate that equals now
    // stays: it is due.
    if (candidate < moment.now())
        candidate = candidate + oneDay;
    // Without any flag the last candidate stands, a week on.
    for (int added = 0; added < 7 && !runsOnWeekdayOf(entry, candidate); ++added)
        candidate = candidate + oneDay;
    return candidate;
}

template<class Moment>
[[gnu::noinline]] TimeValue nextMonthlyRun(Moment moment, const ScheduledProject& entry) {
    // The day is not clamped to the month's length: day 31 of a month of 30 days is the 1st of the next one.
    // Day 0 and less is day 1.
    const TimeSpan offset = TimeSpan::fromDays(std::max(entry.dayOfMonth, 1) - 1) + timeOfDay(entry.time);
    const TimeValue candidate = moment.thisMonth() + offset;
    return candidate >= moment.now() ? candidate : moment.nextMonth() + offset;
}

template<class Moment>
TimeValue nextRun(Moment moment, const ScheduledProject& entry) {
    switch (entry.kind) {
    case ScheduleKind::AfterProject:
        return TimeValue::never();
    case ScheduleKind::AtStartup:
        // The delay in minutes is shown to the user, but not waited for: these entries start at the first
        // tick.
        return moment.startupFlag() ? TimeValue() : TimeValue::never();
    case ScheduleKind::Hourly:
        return nextHourlyRun<Moment>(moment, entry);
    case ScheduleKind::Daily:
        return nextDailyRun<Moment>(moment, entry);
    case ScheduleKind::Monthly:
        return nextMonthlyRun<Moment>(moment, entry);
    case ScheduleKind::Once:
        // Unlike a daily or a monthly occasion, one that equals now has passed.
        return moment.now() < entry.time ? entry.time : TimeValue::never();
    }
    return TimeValue::never();
}

} // namespace

TimeValue computeNextRun(const EngineState& state, const ScheduledProject& entry, TimeValue now) {
    return nextRun(SingleLook(state, now), entry);
}

NextRunSweep::NextRunSweep(const EngineState& state, TimeValue now)
    : startupFlag_(state.startupFlag), now_(now), hour_(hourInProgress(now)) {
    // One look at the clock, so that all entries are looked at on the same day.
    const LocalTime local = state.clock->now().local();
    today_ = startOfDay(local);
    thisMonth_ = startOfMonth(local);
    nextMonth_ = startOfNextMonth(local);
}

TimeValue NextRunSweep::nextRunOf(const ScheduledProject& entry) const {
    return nextRun<const NextRunSweep&>(*this, entry);
}

TimeSpan timeOfDay(TimeValue t) {
    return secondsOfDay(t.local());
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
