#include "lib/base/dates.h"
#include "tests/lib/base/seconds.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <ctime>
#include <limits>

namespace base {
namespace {

using test::localSeconds;

constexpr std::int32_t secondsPerDay = 86400;
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

TEST(Dates, SpanOfDaysIsClamped) {
    const struct {
        std::int32_t days, seconds;
    } rows[] = {{smallest, 0},
                {-1, 0},
                {1, 86400},
                {24'855, 2'147'472'000},
                // Days are clamped to 25,000. Their 2,160,000,000 seconds wrap around.
                {25'000, -2'134'967'296},
                {largest, -2'134'967'296}};
    for (const auto& [days, seconds] : rows)
        EXPECT_EQ(TimeSpan::fromDays(days).seconds(), seconds) << days;
    EXPECT_NE(TimeSpan::fromDays(24'999), TimeSpan::fromDays(25'000));
}

TEST(Dates, SpanOfSecondsIsExactFrom0Up) {
    for (std::int32_t s = 0; s < 200'000; ++s)
        ASSERT_EQ(TimeSpan::fromSeconds(s).seconds(), s);
    EXPECT_EQ(TimeSpan::fromSeconds(largest).seconds(), largest);
}

TEST(Dates, SpanOfNegativeSecondsKeepsWholeDaysOnly) {
    for (const std::int32_t days : {0, 1, 2, 364, 365, 24'854}) {
        const std::int32_t start = -days * secondsPerDay;
        for (std::int32_t left = 0; left < secondsPerDay; left += 59)
            ASSERT_EQ(TimeSpan::fromSeconds(start - left).seconds(), start) << days << ' ' << left;
        ASSERT_EQ(TimeSpan::fromSeconds(start - (secondsPerDay - 1)).seconds(), start) << days;
    }
}

// An overflow in a constant expression would not compile.
static_assert(TimeSpan::fromSeconds(largest).seconds() == largest);
static_assert(TimeSpan::fromSeconds(smallest).seconds() == -2'147'472'000);

TEST(Dates, SpanOfMinutesWrapsAround) {
    EXPECT_EQ(TimeSpan::fromMinutes(0).seconds(), 0);
    EXPECT_EQ(TimeSpan::fromMinutes(90).seconds(), 5400);
    EXPECT_EQ(TimeSpan::fromMinutes(-1).seconds(), -60);
    EXPECT_EQ(TimeSpan::fromMinutes(35'791'395).seconds(), -2'147'483'596);
}

TEST(Dates, SpansAddAndCompare) {
    EXPECT_EQ(TimeSpan().seconds(), 0);
    EXPECT_EQ((TimeSpan::fromDays(1) + TimeSpan::fromMinutes(1)).seconds(), 86460);
    EXPECT_LT(TimeSpan::fromMinutes(1), TimeSpan::fromMinutes(2));
}

TEST(Dates, ValuesHave32BitsAndAreOrdered) {
    EXPECT_EQ(sizeof(TimeValue), 4U);
    EXPECT_EQ(sizeof(TimeSpan), 4U);
    EXPECT_EQ(TimeValue().seconds(), 0);
    EXPECT_EQ(TimeValue::never().seconds(), largest);
    EXPECT_LT(TimeValue(1), TimeValue(2));
    EXPECT_GT(TimeValue::never(), TimeValue(2));
    EXPECT_LT(TimeValue(-1), TimeValue());
    EXPECT_EQ(TimeValue(5), TimeValue(5));
}

TEST(Dates, SumsAndDifferencesWrapAround) {
    EXPECT_EQ((TimeValue(1000) + TimeSpan::fromSeconds(60)).seconds(), 1060);
    EXPECT_EQ((TimeValue(1000) - TimeSpan::fromSeconds(60)).seconds(), 940);
    EXPECT_EQ((TimeValue(10) - TimeSpan::fromSeconds(60)).seconds(), -50);
    EXPECT_EQ((TimeValue::never() + TimeSpan::fromSeconds(1)).seconds(), smallest);
    EXPECT_EQ((TimeValue(smallest) - TimeSpan::fromSeconds(1)).seconds(), largest);
    EXPECT_EQ(secondsBetween(TimeValue(1060), TimeValue(1000)), 60);
    EXPECT_EQ(secondsBetween(TimeValue(1000), TimeValue(1060)), -60);
    EXPECT_EQ(secondsBetween(TimeValue(smallest), TimeValue(1)), largest);
}

TEST(Dates, SystemClockUsesTheRuntimeTimeAndTheSteadyClock) {
    using namespace std::chrono;
    const auto steadyNow = [] { return floor<milliseconds>(steady_clock::now().time_since_epoch()); };
    const milliseconds uptimeBefore = steadyNow();
    const milliseconds uptime = systemClock().uptime();
    EXPECT_LE(uptimeBefore, uptime);
    EXPECT_LE(uptime, steadyNow());
    const auto before = std::time(nullptr);
    const std::int32_t values[] = {TimeValue::now().seconds(), systemClock().now().seconds()};
    const auto after = std::time(nullptr);
    for (const std::int32_t value : values) {
        EXPECT_GE(value, before);
        EXPECT_LE(value, after);
    }
}

void expectFields(TimeValue value, const LocalTime& expected) {
    ASSERT_EQ(value.local(), expected) << value.seconds();
    const LocalTime single{value.year(),   value.month(),  value.day(),      value.hour(),
                           value.minute(), value.second(), value.dayOfWeek()};
    ASSERT_EQ(single, expected) << value.seconds();
}

TEST(Dates, FieldsMatchTheRuntimesLocalTimeAndAre0ForNegativeValues) {
    for (const std::int32_t t : test::instants()) {
        const std::tm fields = test::localFields(t);
        ASSERT_NO_FATAL_FAILURE(
            expectFields(TimeValue(t), {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
                                        fields.tm_hour, fields.tm_min, fields.tm_sec, fields.tm_wday}));
    }
    for (const std::int32_t t : {-1, -86400, smallest})
        expectFields(TimeValue(t), {0, 0, 0, 0, 0, 0, 0});
}

std::int32_t fromLocalFields(const std::tm& fields, int isDst = -1) {
    return TimeValue::fromLocal(fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday, fields.tm_hour,
                                fields.tm_min, fields.tm_sec, isDst)
        .seconds();
}

TEST(Dates, LocalFieldsRoundTrip) {
    for (const std::int32_t t : test::instants()) {
        const std::tm fields = test::localFields(t);
        if (fields.tm_year < 70)
            continue; // west of Greenwich; the runtime may reject local dates before 1970
        // Only the fields are compared because the runtime may choose either instant of a repeated hour.
        ASSERT_EQ(TimeValue(fromLocalFields(fields)).local(), TimeValue(t).local()) << t;
    }
    for (const std::int32_t t : {largest - 1, largest})
        EXPECT_EQ(fromLocalFields(test::localFields(t)), t);
}

TEST(Dates, SkippedAndRepeatedHoursMatchTheRuntime) {
    for (const std::int32_t change : test::clockChanges()) {
        const std::tm at = test::localFields(change);
        for (int minute = -180; minute <= 180; minute += 7)
            for (const int isDst : {-1, 0, 1}) {
                std::tm fields = at;
                fields.tm_min += minute;
                ASSERT_EQ(fromLocalFields(fields, isDst),
                          localSeconds(at.tm_year + 1900, at.tm_mon + 1, at.tm_mday, at.tm_hour,
                                       at.tm_min + minute, at.tm_sec, isDst))
                    << change << ' ' << minute << ' ' << isDst;
            }
    }
}

TEST(Dates, LocalFieldsOutOfRangeRollOver) {
    const struct {
        int year, month, day, hour, minute, second;
        LocalTime expected;
    } rows[] = {{2005, 1, 2, 3, 4, 5, {2005, 1, 2, 3, 4, 5, 0}},
                {2005, 13, 1, 12, 0, 0, {2006, 1, 1, 12, 0, 0, 0}},
                {2005, 0, 1, 12, 0, 0, {2004, 12, 1, 12, 0, 0, 3}},
                {2005, 5, 0, 12, 0, 0, {2005, 4, 30, 12, 0, 0, 6}},
                {2005, 7, 26, 36, 90, -1, {2005, 7, 27, 13, 29, 59, 3}},
                {2004, 2, 29, 12, 0, 0, {2004, 2, 29, 12, 0, 0, 0}},
                {2005, 2, 30, 0, 0, 0, {2005, 3, 2, 0, 0, 0, 3}}};
    for (const auto& [year, month, day, hour, minute, second, expected] : rows)
        EXPECT_EQ(TimeValue::fromLocal(year, month, day, hour, minute, second, -1).local(), expected)
            << year << '-' << month << '-' << day << ' ' << hour << ':' << minute << ':' << second;
}

TEST(Dates, LocalTimesOutsideTheRangeAreEmpty) {
    std::tm fields = test::localFields(largest);
    ++fields.tm_sec;
    EXPECT_EQ(fromLocalFields(fields), 0);
    for (const int year : {smallest, 0, 99, 1900, 2039, 2106, 100'000, largest})
        for (const int isDst : {-1, 0})
            EXPECT_EQ(TimeValue::fromLocal(year, 6, 1, 0, 0, 0, isDst), TimeValue()) << year;
    for (const int month : {smallest, largest})
        EXPECT_EQ(TimeValue::fromLocal(2005, month, 1, 0, 0, 0, -1), TimeValue()) << month;
    EXPECT_EQ(TimeValue::fromLocal(largest, largest, 1, 0, 0, 0, -1), TimeValue());
    for (const int year : {1902, 1938, 1969})
        EXPECT_LE(TimeValue::fromLocal(year, 6, 1, 0, 0, 0, -1), TimeValue()) << year;
    // mktime returns -1 for the second before the epoch and for failure.
    const std::int32_t west = localSeconds(1970, 1, 3, 0, 0, 0, 0) - 2 * secondsPerDay;
    EXPECT_EQ(TimeValue::fromLocal(1970, 1, 1, 0, 0, -1 - west, 0), TimeValue());
}

} // namespace
} // namespace base
