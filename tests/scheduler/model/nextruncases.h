// Entries and moments for the tests of next runs.
#pragma once

#include "scheduler/model/nextrun.h"
#include "tests/support/fakeclock.h"
#include "tests/support/instants.h"

#include <cstdint>
#include <ctime>
#include <limits>
#include <string>

namespace test {

inline constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
inline constexpr std::int32_t day = 86400;

inline std::int32_t made(int year, int month, int dayOfMonth, int hour, int minute = 0, int second = 0) {
    std::tm fields{};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = dayOfMonth;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    const std::int64_t t = std::mktime(&fields);
    return t == -1 || t < lowest || t > highest ? 0 : static_cast<std::int32_t>(t);
}

/// A negative time has no fields.
inline std::tm fieldsOf(std::int32_t t) {
    std::tm none{};
    none.tm_year = -1900;
    none.tm_mon = -1;
    return t < 0 ? none : localFields(t);
}

inline std::int32_t clockTimeOf(std::int32_t t) {
    const std::tm fields = fieldsOf(t);
    return fields.tm_sec + (fields.tm_hour * 60 + fields.tm_min) * 60;
}

inline scheduler::ScheduledProject hourly(std::int32_t minutes) {
    scheduler::ScheduledProject entry;
    entry.kind = scheduler::ScheduleKind::Hourly;
    entry.minutes = minutes;
    return entry;
}

/// `days` has a mark for each day from Monday to Sunday: a point for a day without a run.
inline scheduler::ScheduledProject daily(base::TimeValue time, const std::string& days) {
    scheduler::ScheduledProject entry;
    entry.kind = scheduler::ScheduleKind::Daily;
    entry.time = time;
    for (std::size_t i = 0; i < entry.weekdays.size(); ++i)
        entry.weekdays[i] = days[i] != '.';
    return entry;
}

inline scheduler::ScheduledProject monthly(base::TimeValue time, std::int32_t dayOfMonth) {
    scheduler::ScheduledProject entry;
    entry.kind = scheduler::ScheduleKind::Monthly;
    entry.time = time;
    entry.dayOfMonth = dayOfMonth;
    return entry;
}

inline scheduler::ScheduledProject once(base::TimeValue time) {
    scheduler::ScheduledProject entry;
    entry.kind = scheduler::ScheduleKind::Once;
    entry.time = time;
    return entry;
}

inline scheduler::ScheduledProject ofKind(int kind) {
    scheduler::ScheduledProject entry;
    entry.kind = static_cast<scheduler::ScheduleKind>(kind);
    return entry;
}

inline base::TimeValue at(int year, int month, int dayOfMonth, int hour = 0, int minute = 0, int second = 0) {
    return base::TimeValue(made(year, month, dayOfMonth, hour, minute, second));
}

/// Some day's time: only the time of day may count.
inline base::TimeValue clockTime(int hour, int minute = 0, int second = 0) {
    return at(2003, 1, 15, hour, minute, second);
}

inline base::TimeValue seconds(std::int32_t t) {
    return base::TimeValue(t);
}

inline base::TimeValue nextRun(const scheduler::ScheduledProject& entry, base::TimeValue now,
                               base::TimeValue clockNow, bool startup = false) {
    const FakeClock clock(clockNow);
    return scheduler::computeNextRun({.startupFlag = startup, .suspended = false}, entry, now, clock);
}

inline base::TimeValue nextRun(const scheduler::ScheduledProject& entry, base::TimeValue now) {
    return nextRun(entry, now, now);
}

/// The same for an entry among many.
inline base::TimeValue nextRunInSweep(const scheduler::ScheduledProject& entry, base::TimeValue now,
                                      base::TimeValue clockNow, bool startup = false) {
    const FakeClock clock(clockNow);
    scheduler::NextRuns nextRuns({.startupFlag = startup, .suspended = false}, now, clock);
    return nextRuns.of(entry);
}

inline std::string text(base::TimeValue t) {
    if (t.seconds() < 0)
        return std::to_string(t.seconds());
    const std::tm fields = localFields(t.seconds());
    char line[64] = {};
    std::strftime(line, sizeof line, "%a %Y-%m-%d %H:%M:%S", &fields);
    return line + (" (" + std::to_string(t.seconds()) + ")");
}

} // namespace test
