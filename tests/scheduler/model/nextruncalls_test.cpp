// How often next runs ask the runtime for the time and the calendar.
#include "tests/scheduler/model/nextruncases.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

#include <ctime>
#include <ostream>

namespace {

struct Calls {
    int time = 0;
    int localtime = 0;
    int mktime = 0;

    friend bool operator==(const Calls&, const Calls&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Calls& calls) {
        return out << calls.time << " time, " << calls.localtime << " localtime, " << calls.mktime
                   << " mktime";
    }
};

Calls calls;

__time32_t countedTime(__time32_t* out) {
    static const auto time = test::platformFunction<decltype(&_time32)>("msvcrt.dll", "time");
    ++calls.time;
    return time(out);
}

std::tm* countedLocaltime(const __time32_t* seconds) {
    static const auto localtime = test::platformFunction<decltype(&_localtime32)>("msvcrt.dll", "localtime");
    ++calls.localtime;
    return localtime(seconds);
}

__time32_t countedMktime(std::tm* fields) {
    static const auto mktime = test::platformFunction<decltype(&_mktime32)>("msvcrt.dll", "mktime");
    ++calls.mktime;
    return mktime(fields);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(_time32, "__time32", countedTime);
SCHEDULER_REPLACE_IMPORT(_localtime32, "__localtime32", countedLocaltime);
SCHEDULER_REPLACE_IMPORT(_mktime32, "__mktime32", countedMktime);

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduledProject;
using test::clockTime;
using test::daily;
using test::hourly;
using test::monthly;
using test::ofKind;
using test::once;

Calls callsFor(const ScheduledProject& entry) {
    // Not the very second at which a month begins.
    const TimeValue now = TimeValue::now() + TimeSpan::fromMinutes(1);
    calls = {};
    computeNextRun({}, entry, now, base::systemClock());
    return calls;
}

TEST(NextRunCalls, OnlyTheKindsOnTheCalendarMakeAny) {
    EXPECT_EQ(callsFor(ofKind(0)), Calls());
    EXPECT_EQ(callsFor(ofKind(1)), Calls());
    EXPECT_EQ(callsFor(once(clockTime(12))), Calls());
    EXPECT_EQ(callsFor(hourly(30)), (Calls{.localtime = 1, .mktime = 1}));
}

TEST(NextRunCalls, OneLookAtTheMomentAndOneAtTheTimeOfDay) {
    const Calls expected = {.time = 1, .localtime = 2, .mktime = 1};
    for (const char* days : {"MTWTFSS", "M......", "......."})
        EXPECT_EQ(callsFor(daily(clockTime(12), days)), expected) << days;
    EXPECT_EQ(callsFor(monthly(clockTime(12), 40)), expected);
}

TEST(NextRunCalls, TheNextMonthIsAskedForWhenThisOnesDayIsGone) {
    EXPECT_EQ(callsFor(monthly(clockTime(0), 1)), (Calls{.time = 1, .localtime = 2, .mktime = 2}));
}

TEST(NextRunCalls, ASecondLookAtTheSameMomentAsksForTheTimeOfDayOnly) {
    const auto entries = {hourly(30), daily(clockTime(12), "M......"), monthly(clockTime(0), 1)};
    scheduler::NextRuns nextRuns({}, TimeValue::now(), base::systemClock());
    for (const ScheduledProject& entry : entries)
        nextRuns.of(entry);
    calls = {};
    for (const ScheduledProject& entry : entries)
        nextRuns.of(entry);
    EXPECT_EQ(calls, (Calls{.localtime = 2}));
}

} // namespace
