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
    // A minute ahead, so that the start of the clock's month is always past.
    const TimeValue now = TimeValue::now() + base::TimeSpan::fromMinutes(1);
    newCalls();
    computeNextRun({}, entry, now, base::systemClock());
    return newCalls();
}

TEST(NextRunCalls, AreMinimalAndOnlyForCalendarKinds) {
    std::vector<Calls> calls;
    for (const ScheduledProject& entry : oneOfEachKind())
        calls.push_back(callsFor(entry));
    EXPECT_EQ(calls, (std::vector<Calls>{{}, {}, {0, 1, 1}, {1, 2, 1}, {1, 2, 2}, {}}));
    for (const char* days : {"MTWTFSS", "......."})
        EXPECT_EQ(callsFor(daily(clockTime(12), days)), (Calls{1, 2, 1})) << days;
    EXPECT_EQ(callsFor(monthly(clockTime(12), 40)), (Calls{1, 2, 1})) << "its day has not passed";
}

TEST(NextRunCalls, OnlyReadTheTimeOfDayOnRepeatedQueries) {
    const std::vector<ScheduledProject> entries = oneOfEachKind();
    scheduler::NextRuns nextRuns({}, TimeValue::now(), base::systemClock());
    for (const ScheduledProject& entry : entries)
        nextRuns.of(entry);
    newCalls();
    for (const ScheduledProject& entry : entries)
        nextRuns.of(entry);
    EXPECT_EQ(newCalls(), (Calls{0, 2, 0}));
}

} // namespace
