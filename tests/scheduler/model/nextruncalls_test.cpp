// How often next runs ask the runtime for the time and the calendar.
#include "scheduler/model/nextrun.h"
#include "tests/scheduler/model/entries.h"
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
    friend std::ostream& operator<<(std::ostream& out, const Calls& made) {
        return out << made.time << " time, " << made.localtime << " localtime, " << made.mktime << " mktime";
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

using namespace test;
using base::TimeValue;
using scheduler::ScheduledProject;

Calls callsFor(const ScheduledProject& entry) {
    // Not the very second at which a month begins.
    const TimeValue now = TimeValue::now() + base::TimeSpan::fromMinutes(1);
    calls = {};
    computeNextRun({}, entry, now, base::systemClock());
    return calls;
}

TEST(NextRunCalls, AreMadeForTheKindsOnTheCalendarOnlyAndAsFewAsPossible) {
    for (const ScheduledProject& entry : {ofKind(0), ofKind(1), once(clockTime(12))})
        EXPECT_EQ(callsFor(entry), Calls());
    EXPECT_EQ(callsFor(hourly(30)), (Calls{.localtime = 1, .mktime = 1}));
    // One look at the moment and one at the time of day.
    const Calls both = {.time = 1, .localtime = 2, .mktime = 1};
    for (const char* days : {"MTWTFSS", "M......", "......."})
        EXPECT_EQ(callsFor(daily(clockTime(12), days)), both) << days;
    EXPECT_EQ(callsFor(monthly(clockTime(12), 40)), both);
    EXPECT_EQ(callsFor(monthly(clockTime(0), 1)), (Calls{.time = 1, .localtime = 2, .mktime = 2}))
        << "the next month is asked for when this month's day is gone";
}

TEST(NextRunCalls, AreForTheTimeOfDayOnlyAtASecondLookAtTheSameMoment) {
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
