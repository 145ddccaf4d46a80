// Entries and a moment for the tests of descriptions.
#pragma once

#include "lib/base/locale.h"
#include "scheduler/model/descriptions.h"
#include "tests/support/fakeclock.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace test {

inline base::TimeValue someTime() {
    return base::TimeValue::fromLocal(2026, 1, 5, 20, 0, 45, -1);
}

/// Without seconds, in the user's form.
inline std::string timeText(base::TimeValue t = someTime()) {
    return base::formatLocaleTime(t, false, true);
}

inline scheduler::ScheduledProject withPath(const std::string& path) {
    scheduler::ScheduledProject entry;
    entry.path = path;
    return entry;
}

inline scheduler::ScheduledProject ofKind(int kind, std::int32_t minutes = 0) {
    scheduler::ScheduledProject entry;
    entry.kind = static_cast<scheduler::ScheduleKind>(kind);
    entry.minutes = minutes;
    return entry;
}

inline scheduler::ScheduledProject after(std::int32_t index, std::int32_t minutes = 0) {
    scheduler::ScheduledProject entry = ofKind(0, minutes);
    entry.afterIndex = index;
    return entry;
}

/// `days` has a mark for each day from Monday to Sunday: a point for a day without a run.
inline scheduler::ScheduledProject daily(const std::string& days, base::TimeValue time = someTime()) {
    scheduler::ScheduledProject entry = ofKind(3);
    entry.time = time;
    for (std::size_t i = 0; i < entry.weekdays.size(); ++i)
        entry.weekdays[i] = days[i] != '.';
    return entry;
}

inline scheduler::ScheduledProject monthly(std::int32_t dayOfMonth, base::TimeValue time = someTime()) {
    scheduler::ScheduledProject entry = ofKind(4);
    entry.dayOfMonth = dayOfMonth;
    entry.time = time;
    return entry;
}

inline scheduler::ScheduledProject atTime(int kind, base::TimeValue time) {
    scheduler::ScheduledProject entry = ofKind(kind);
    entry.time = time;
    return entry;
}

/// A row of a table.
struct Schedule {
    const char* what;
    scheduler::ScheduledProject entry;
    std::string phrase;
};

class DescriptionsTest : public testing::Test {
protected:
    DescriptionsTest() {
        list.append(withPath("C:\\Sites\\first.kra"));
        list.append(withPath("C:\\Sites\\news.daily.kra"));
        list.append(withPath("run:cmd /c exit"));
    }

    scheduler::ScheduleList list;
    FakeClock clock{someTime()};
    scheduler::EngineState state{.startupFlag = false, .suspended = false};
};

} // namespace test
