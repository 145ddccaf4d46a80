#include "tests/scheduler/model/nextruncases.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <vector>

namespace {

using base::TimeSpan;
using base::TimeValue;
using test::at;
using test::clockTime;
using test::clockTimeOf;
using test::daily;
using test::day;
using test::fieldsOf;
using test::nextRun;
using test::seconds;
using test::text;

// Daylight saving time: days are steps of 86400 seconds

/// The first second after the clock was put back, or forward, in the years looked at.
std::vector<std::int32_t> changesBy(std::int32_t gained) {
    std::vector<std::int32_t> instants;
    for (const std::int32_t before : test::clockChanges())
        for (std::int32_t t = before; t <= before + 900; ++t) {
            const std::int32_t step = (clockTimeOf(t + 1) - clockTimeOf(t) + day) % day;
            if (step != 1) {
                if ((step > day / 2) == (gained > 0))
                    instants.push_back(t + 1);
                break;
            }
        }
    return instants;
}

TimeValue midnightBefore(std::int32_t t) {
    const std::tm fields = fieldsOf(t);
    return at(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday);
}

TimeValue midnightAfter(std::int32_t t) {
    const std::tm fields = fieldsOf(t);
    return at(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday + 1);
}

TEST(NextRunAcrossClockChanges, ADailyEntryRunsAnHourEarlyAfterTheClockIsPutBack) {
    for (const std::int32_t change : changesBy(3600)) {
        // Computed at noon of the day before, for every day at 08:00, which is gone by.
        const TimeValue dayBefore = midnightBefore(change - day);
        const TimeValue noon = dayBefore + TimeSpan::fromMinutes(12 * 60);
        const TimeValue result = nextRun(daily(clockTime(8), "MTWTFSS"), noon);
        EXPECT_EQ(result, dayBefore + TimeSpan::fromMinutes(8 * 60) + TimeSpan::fromDays(1));
        EXPECT_LE(clockTimeOf(result.seconds()), 7 * 3600 + 1800) << text(result);
    }
}

TEST(NextRunAcrossClockChanges, ADailyEntryRunsAnHourLateAfterTheClockIsPutForward) {
    for (const std::int32_t change : changesBy(-3600)) {
        const TimeValue dayBefore = midnightBefore(change - day);
        const TimeValue noon = dayBefore + TimeSpan::fromMinutes(12 * 60);
        const TimeValue result = nextRun(daily(clockTime(8), "MTWTFSS"), noon);
        EXPECT_GE(clockTimeOf(result.seconds()), 8 * 3600 + 1800) << text(result);
    }
}

TEST(NextRunAcrossClockChanges, AnEntryAfterMidnightIsDueAgainUntilTheLongDaysEnd) {
    for (const std::int32_t change : changesBy(3600)) {
        const TimeValue end = midnightAfter(change);
        const TimeValue now = end - TimeSpan::fromMinutes(5);
        // The day has more than 86400 seconds, and one day is added once.
        const TimeValue result = nextRun(daily(clockTime(0, 10), "MTWTFSS"), now);
        EXPECT_EQ(result, midnightBefore(change) + TimeSpan::fromDays(1) + TimeSpan::fromMinutes(10));
        EXPECT_LT(result, now) << text(result);
    }
}

} // namespace
