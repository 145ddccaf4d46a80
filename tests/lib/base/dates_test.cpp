#include "lib/base/dates.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <limits>
#include <vector>

namespace base {
namespace {

constexpr std::int32_t secondsPerDay = 86400;
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

std::vector<std::int32_t> instants() {
    std::vector<std::int32_t> result = {1, 2 * secondsPerDay, 68'169'599, 784'111'777, largest - 1, largest};
    for (const std::int32_t end : test::calendarEnds())
        // Wherever the zone's midnight lies.
        for (std::int32_t t = end - 14 * 3600; t <= end + 14 * 3600; t += 1800) {
            result.push_back(t);
            result.push_back(t + 1);
        }
    for (const std::int32_t change : test::clockChanges())
        for (std::int32_t t = change - 4 * 3600; t <= change + 4 * 3600; t += 307)
            result.push_back(t);
    return result;
}

TimeValue fromLocalFields(const std::tm& fields, int isDst) {
    return TimeValue::fromLocal(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour,
                                fields.tm_min, fields.tm_sec, isDst);
}

// Spans

TEST(TimeSpan, OfDaysIsClamped) {
    EXPECT_EQ(TimeSpan::fromDays(-3).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromDays(smallest).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromDays(0).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromDays(1).seconds(), 86400);
    EXPECT_EQ(TimeSpan::fromDays(364).seconds(), 31'449'600);
    EXPECT_EQ(TimeSpan::fromDays(24855).seconds(), 2'147'472'000);
}

TEST(TimeSpan, OfThirtyThousandDaysIsTwentyFiveThousandDays) {
    EXPECT_EQ(TimeSpan::fromDays(30000), TimeSpan::fromDays(25000));
    EXPECT_EQ(TimeSpan::fromDays(largest), TimeSpan::fromDays(25000));
    EXPECT_NE(TimeSpan::fromDays(24999), TimeSpan::fromDays(25000));
    // 2,160,000,000 seconds in 32 bits.
    EXPECT_EQ(TimeSpan::fromDays(25000).seconds(), -2'134'967'296);
}

TEST(TimeSpan, OfSecondsIsExactFromZeroUp) {
    for (std::int32_t s = 0; s < 200'000; ++s)
        ASSERT_EQ(TimeSpan::fromSeconds(s).seconds(), s);
    for (const std::int32_t s : {31'535'999, 2'147'472'000, largest - 1, largest})
        EXPECT_EQ(TimeSpan::fromSeconds(s).seconds(), s);
}

TEST(TimeSpan, OfNegativeSecondsKeepsWholeDaysOnly) {
    EXPECT_EQ(TimeSpan::fromSeconds(-1).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromSeconds(-3600).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromSeconds(-86399).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromSeconds(-86400).seconds(), -86400);
    EXPECT_EQ(TimeSpan::fromSeconds(-86401).seconds(), -86400);
    EXPECT_EQ(TimeSpan::fromSeconds(-172'799).seconds(), -86400);
    EXPECT_EQ(TimeSpan::fromSeconds(smallest).seconds(), -2'147'472'000);
}

// Evaluated by the compiler, which accepts no overflow on the way.
static_assert(TimeSpan::fromSeconds(largest).seconds() == largest);
static_assert(TimeSpan::fromSeconds(smallest).seconds() == -2'147'472'000);

TEST(TimeSpan, OfNegativeSecondsDropsWhatIsLeftOfADay) {
    for (const std::int32_t days : {0, 1, 2, 364, 365, 24'854}) {
        const std::int32_t start = -days * secondsPerDay;
        for (std::int32_t left = 0; left < secondsPerDay; left += 59)
            ASSERT_EQ(TimeSpan::fromSeconds(start - left).seconds(), start) << days << ' ' << left;
        ASSERT_EQ(TimeSpan::fromSeconds(start - (secondsPerDay - 1)).seconds(), start) << days;
    }
}

TEST(TimeSpan, OfMinutesWrapsAround) {
    EXPECT_EQ(TimeSpan::fromMinutes(0).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromMinutes(90).seconds(), 5400);
    EXPECT_EQ(TimeSpan::fromMinutes(-1).seconds(), -60);
    EXPECT_EQ(TimeSpan::fromMinutes(35'791'395).seconds(), -2'147'483'596);
}

TEST(TimeSpan, Adds) {
    EXPECT_EQ(TimeSpan::fromDays(1) + TimeSpan::fromMinutes(1), TimeSpan::fromSeconds(86460));
    EXPECT_LT(TimeSpan::fromMinutes(1), TimeSpan::fromMinutes(2));
    EXPECT_EQ(TimeSpan().seconds(), 0);
}

// Values

TEST(TimeValue, IsNoTimeAtFirst) {
    EXPECT_EQ(TimeValue().seconds(), 0);
    EXPECT_EQ(sizeof(TimeValue), 4U);
    EXPECT_EQ(sizeof(TimeSpan), 4U);
}

TEST(TimeValue, NeverIsTheLargest) {
    EXPECT_EQ(TimeValue::never().seconds(), 0x7FFFFFFF);
}

TEST(TimeValue, AddsAndSubtractsPlainSecondsAndWrapsAround) {
    EXPECT_EQ((TimeValue(1000) + TimeSpan::fromSeconds(60)).seconds(), 1060);
    EXPECT_EQ((TimeValue(1000) - TimeSpan::fromSeconds(60)).seconds(), 940);
    EXPECT_EQ((TimeValue(10) - TimeSpan::fromSeconds(60)).seconds(), -50);
    EXPECT_EQ((TimeValue::never() + TimeSpan::fromSeconds(1)).seconds(), smallest);
    EXPECT_EQ((TimeValue(smallest) - TimeSpan::fromSeconds(1)).seconds(), largest);
    EXPECT_EQ(secondsBetween(TimeValue(1060), TimeValue(1000)), 60);
    EXPECT_EQ(secondsBetween(TimeValue(1000), TimeValue(1060)), -60);
    EXPECT_EQ(secondsBetween(TimeValue(smallest), TimeValue(1)), largest);
}

TEST(TimeValue, IsOrdered) {
    EXPECT_LT(TimeValue(1), TimeValue(2));
    EXPECT_GT(TimeValue::never(), TimeValue(2));
    EXPECT_LT(TimeValue(-1), TimeValue());
    EXPECT_EQ(TimeValue(5), TimeValue(5));
}

TEST(SystemClock, UptimeIsThatOfTheSteadyClock) {
    const auto steadyNow = [] {
        return std::chrono::floor<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    };
    const std::chrono::milliseconds before = steadyNow();
    const std::chrono::milliseconds uptime = systemClock().uptime();
    EXPECT_LE(before, uptime);
    EXPECT_LE(uptime, steadyNow());
}

TEST(TimeValue, NowIsTheRuntimesTime) {
    const auto before = std::time(nullptr);
    const TimeValue now = TimeValue::now();
    const TimeValue clock = systemClock().now();
    const auto after = std::time(nullptr);
    EXPECT_GE(now.seconds(), before);
    EXPECT_LE(now.seconds(), after);
    EXPECT_GE(clock.seconds(), before);
    EXPECT_LE(clock.seconds(), after);
}

TEST(TimeValue, FieldsAreTheRuntimesLocalTime) {
    for (const std::int32_t t : instants()) {
        const std::tm expected = test::localFields(t);
        const TimeValue value(t);
        ASSERT_EQ(value.year(), expected.tm_year + 1900) << t;
        ASSERT_EQ(value.month(), expected.tm_mon + 1) << t;
        ASSERT_EQ(value.day(), expected.tm_mday) << t;
        ASSERT_EQ(value.hour(), expected.tm_hour) << t;
        ASSERT_EQ(value.minute(), expected.tm_min) << t;
        ASSERT_EQ(value.second(), expected.tm_sec) << t;
        ASSERT_EQ(value.dayOfWeek(), expected.tm_wday) << t;
        const LocalTime fields{value.year(),   value.month(),  value.day(),      value.hour(),
                               value.minute(), value.second(), value.dayOfWeek()};
        ASSERT_EQ(value.local(), fields) << t;
    }
}

TEST(TimeValue, FieldsCountAsPeopleDo) {
    const LocalTime local = TimeValue::fromLocal(2005, 1, 2, 3, 4, 5, -1).local(); // a Sunday
    EXPECT_EQ(local, (LocalTime{2005, 1, 2, 3, 4, 5, 0}));
}

TEST(TimeValue, NegativeHasNoFields) {
    for (const std::int32_t t : {-1, -86400, smallest}) {
        const TimeValue value(t);
        EXPECT_EQ(value.local(), LocalTime()) << t;
        EXPECT_EQ(value.year(), 0) << t;
        EXPECT_EQ(value.month(), 0) << t;
        EXPECT_EQ(value.day(), 0) << t;
        EXPECT_EQ(value.hour(), 0) << t;
        EXPECT_EQ(value.minute(), 0) << t;
        EXPECT_EQ(value.second(), 0) << t;
        EXPECT_EQ(value.dayOfWeek(), 0) << t;
    }
}

// Local dates and times

TEST(FromLocal, GivesBackWhatTheFieldsWereTakenFrom) {
    for (const std::int32_t t : instants()) {
        const std::tm fields = test::localFields(t);
        if (fields.tm_year < 70)
            continue; // the runtime may refuse a local date before 1970, where it is west of Greenwich
        const TimeValue value = fromLocalFields(fields, -1);
        // Of a repeated hour the runtime chooses; its fields are the same all the same.
        ASSERT_EQ(value.local(), TimeValue(t).local()) << t;
    }
}

TEST(FromLocal, IsTheRuntimesChoiceInSkippedAndRepeatedHours) {
    for (const std::int32_t change : test::clockChanges()) {
        const std::tm at = test::localFields(change);
        for (int minute = -180; minute <= 180; minute += 7)
            for (const int isDst : {-1, 0, 1}) {
                std::tm fields{};
                fields.tm_year = at.tm_year;
                fields.tm_mon = at.tm_mon;
                fields.tm_mday = at.tm_mday;
                fields.tm_hour = at.tm_hour;
                fields.tm_min = at.tm_min + minute;
                fields.tm_isdst = isDst;
                const TimeValue value = fromLocalFields(fields, isDst);
                ASSERT_EQ(value.seconds(), std::mktime(&fields)) << change << ' ' << minute << ' ' << isDst;
            }
    }
}

TEST(FromLocal, ReachesTheLastSecondOfTheRange) {
    for (const std::int32_t t : {largest - 1, largest})
        EXPECT_EQ(fromLocalFields(test::localFields(t), -1).seconds(), t);
}

TEST(FromLocal, ThirtiethOfFebruaryIsTheSecondOfMarch) {
    const LocalTime local = TimeValue::fromLocal(2005, 2, 30, 0, 0, 0, 0).local();
    EXPECT_EQ(local.year, 2005);
    EXPECT_EQ(local.month, 3);
    EXPECT_EQ(local.day, 2);
}

TEST(FromLocal, EndsWithTheRange) {
    std::tm fields = test::localFields(largest);
    ++fields.tm_sec;
    EXPECT_EQ(fromLocalFields(fields, -1), TimeValue());
    fields = test::localFields(largest);
    ++fields.tm_mday;
    EXPECT_EQ(fromLocalFields(fields, -1), TimeValue());
}

TEST(FromLocal, BeforeTheEpochIsNoValidTime) {
    for (const int year : {1902, 1938, 1969})
        EXPECT_LE(TimeValue::fromLocal(year, 6, 1, 0, 0, 0, -1), TimeValue()) << year;
}

TEST(FromLocal, TheRuntimesFailureIsNoTime) {
    // The second before the epoch, which the runtime cannot tell from a failure.
    const std::int32_t west = TimeValue::fromLocal(1970, 1, 3, 0, 0, 0, 0).seconds() - 2 * secondsPerDay;
    EXPECT_EQ(TimeValue::fromLocal(1970, 1, 1, 0, 0, -1 - west, 0), TimeValue());
    EXPECT_EQ(TimeValue::fromLocal(largest, largest, 1, 0, 0, 0, -1), TimeValue());
}

TEST(FromLocal, TakesHugeFieldsWithoutOverflow) {
    for (const int field : {smallest, largest}) {
        EXPECT_EQ(TimeValue::fromLocal(field, 1, 1, 0, 0, 0, -1), TimeValue()) << field;
        EXPECT_EQ(TimeValue::fromLocal(2005, field, 1, 0, 0, 0, -1), TimeValue()) << field;
    }
}

struct RollCase {
    int year, month, day, hour, minute, second;
    LocalTime expected;
};

TEST(FromLocal, RollsFieldsOutOfRangeOver) {
    for (const RollCase& row : {
             RollCase{2005, 13, 1, 12, 0, 0, {2006, 1, 1, 12, 0, 0, 0}},
             RollCase{2005, 0, 1, 12, 0, 0, {2004, 12, 1, 12, 0, 0, 3}},
             RollCase{2005, 1, 32, 12, 0, 0, {2005, 2, 1, 12, 0, 0, 2}},
             RollCase{2005, 5, 0, 12, 0, 0, {2005, 4, 30, 12, 0, 0, 6}},
             RollCase{2005, 7, 26, 36, 0, 0, {2005, 7, 27, 12, 0, 0, 3}},
             RollCase{2005, 7, 27, 12, 90, 0, {2005, 7, 27, 13, 30, 0, 3}},
             RollCase{2005, 7, 27, 12, 0, -1, {2005, 7, 27, 11, 59, 59, 3}},
             RollCase{2004, 2, 29, 12, 0, 0, {2004, 2, 29, 12, 0, 0, 0}},
             RollCase{2005, 2, 29, 12, 0, 0, {2005, 3, 1, 12, 0, 0, 2}},
             RollCase{2004, 12, 31, 23, 59, 60, {2005, 1, 1, 0, 0, 0, 6}},
         })
        EXPECT_EQ(
            TimeValue::fromLocal(row.year, row.month, row.day, row.hour, row.minute, row.second, -1).local(),
            row.expected)
            << row.year << '-' << row.month << '-' << row.day << ' ' << row.hour << ':' << row.minute << ':'
            << row.second;
}

TEST(FromLocal, OutsideTheRangeIsNoTime) {
    for (const int year : {smallest, 0, 99, 1900, 2039, 2106, 100'000, largest}) {
        EXPECT_EQ(TimeValue::fromLocal(year, 6, 1, 0, 0, 0, -1), TimeValue()) << year;
        EXPECT_EQ(TimeValue::fromLocal(year, 6, 1, 0, 0, 0, 0), TimeValue()) << year;
    }
    EXPECT_EQ(TimeValue::fromLocal(2038, 1, 21, 0, 0, 0, -1), TimeValue());
}

} // namespace
} // namespace base
