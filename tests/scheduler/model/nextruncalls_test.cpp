#include "scheduler/model/nextrun.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/importedfunctions.h"

#include <gmock/gmock.h>

#include <array>
#include <ctime>

SCHEDULER_STAND_IN("msvcrt.dll", _time32, "__time32");
SCHEDULER_STAND_IN("msvcrt.dll", _localtime32, "__localtime32");
SCHEDULER_STAND_IN("msvcrt.dll", _mktime32, "__mktime32");

namespace {

using namespace test;
using base::TimeValue;
using scheduler::ScheduledProject;

using Calls = std::array<int, 3>;

Calls newCalls() {
    return {platform::_time32.calls.exchange(0), platform::_localtime32.calls.exchange(0),
            platform::_mktime32.calls.exchange(0)};
}

Calls callsFor(const ScheduledProject& entry) {
    // Avoids the first second of a month.
    const TimeValue now = TimeValue::now() + base::TimeSpan::fromMinutes(1);
    newCalls();
    computeNextRun({}, entry, now, base::systemClock());
    return newCalls();
}

static_assert(scheduler::kindCount == 6, "count the calls for the new kind, too");

TEST(NextRunCalls, AreMinimalAndOnlyForCalendarKinds) {
    for (const ScheduledProject& entry : {ofKind(0), ofKind(1), once(clockTime(12))})
        EXPECT_EQ(callsFor(entry), Calls());
    EXPECT_EQ(callsFor(hourly(30)), (Calls{0, 1, 1}));
    for (const char* days : {"MTWTFSS", "M......", "......."})
        EXPECT_EQ(callsFor(daily(clockTime(12), days)), (Calls{1, 2, 1})) << days;
    EXPECT_EQ(callsFor(monthly(clockTime(12), 40)), (Calls{1, 2, 1}));
    EXPECT_EQ(callsFor(monthly(clockTime(0), 1)), (Calls{1, 2, 2})) << "the day of this month has passed";
}

TEST(NextRunCalls, OnlyReadTheTimeOfDayOnRepeatedQueries) {
    const auto entries = {hourly(30), daily(clockTime(12), "M......"), monthly(clockTime(0), 1)};
    scheduler::NextRuns nextRuns({}, TimeValue::now(), base::systemClock());
    for (const ScheduledProject& entry : entries)
        nextRuns.of(entry);
    newCalls();
    for (const ScheduledProject& entry : entries)
        nextRuns.of(entry);
    EXPECT_EQ(newCalls(), (Calls{0, 2, 0}));
}

} // namespace
