#pragma once

#include "scheduler/model/schedulelist.h"
#include "tests/support/plainitem.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace test {

inline constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

/// Local date and time, computed without the code under test.
inline base::TimeValue at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    const plain::Second hourStart = plain::secondOf(year - 1900, month - 1, day, hour);
    return base::TimeValue(static_cast<std::int32_t>(hourStart) + minute * 60 + second);
}

/// Entries store a time of day together with an arbitrary date.
inline base::TimeValue clockTime(int hour, int minute = 0, int second = 0) {
    return at(2003, 1, 15, hour, minute, second);
}

inline std::vector<scheduler::ScheduledProject> entriesOf(const scheduler::ScheduleList& list) {
    return {list.begin(), list.end()};
}

inline std::vector<std::string> pathsOf(const scheduler::ScheduleList& list) {
    std::vector<std::string> paths;
    for (const scheduler::ScheduledProject& entry : list)
        paths.push_back(entry.path);
    return paths;
}

inline scheduler::ScheduledProject withPath(const std::string& path) {
    scheduler::ScheduledProject entry;
    entry.path = path;
    return entry;
}

inline scheduler::ScheduledProject ofKind(int kind, std::int32_t minutes = 0, base::TimeValue time = {}) {
    scheduler::ScheduledProject entry;
    entry.kind = static_cast<scheduler::ScheduleKind>(kind);
    entry.minutes = minutes;
    entry.time = time;
    return entry;
}

inline scheduler::ScheduledProject after(std::int32_t index, std::int32_t minutes = 0) {
    scheduler::ScheduledProject entry = ofKind(0, minutes);
    entry.afterIndex = index;
    return entry;
}

inline scheduler::ScheduledProject hourly(std::int32_t minutes) {
    return ofKind(2, minutes);
}

/// `days` has one character per day, Monday first: "." for a day without a run.
inline scheduler::ScheduledProject daily(base::TimeValue time, std::string_view days) {
    scheduler::ScheduledProject entry = ofKind(3, 0, time);
    for (std::size_t i = 0; i < entry.weekdays.size(); ++i)
        entry.weekdays[i] = days[i] != '.';
    return entry;
}

inline scheduler::ScheduledProject monthly(base::TimeValue time, std::int32_t dayOfMonth) {
    scheduler::ScheduledProject entry = ofKind(4, 0, time);
    entry.dayOfMonth = dayOfMonth;
    return entry;
}

inline scheduler::ScheduledProject once(base::TimeValue time) {
    return ofKind(5, 0, time);
}

inline std::vector<scheduler::ScheduledProject> oneOfEachKind() {
    static_assert(scheduler::kindCount == 6, "add an entry of the new kind");
    const base::TimeValue noon = clockTime(12);
    return {ofKind(0), ofKind(1), hourly(30), daily(noon, "M......"), monthly(clockTime(0), 1), once(noon)};
}

} // namespace test
