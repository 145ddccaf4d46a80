#include "lib/base/dates.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace base {
namespace {

constexpr std::int32_t secondsPerDay = 86400;
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

std::int32_t utcSeconds(int year, unsigned month, unsigned day) {
    using namespace std::chrono;
    const sys_days date = std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
    return static_cast<std::int32_t>(duration_cast<seconds>(date.time_since_epoch()).count());
}

TimeValue fromUtcSeconds(std::int32_t t) {
    using namespace std::chrono;
    const sys_seconds instant{seconds(t)};
    const auto date = floor<days>(instant);
    const year_month_day calendar(date);
    const hh_mm_ss clock(instant - date);
    return TimeValue::fromUtc(
        int(calendar.year()), static_cast<int>(unsigned(calendar.month())),
        static_cast<int>(unsigned(calendar.day())), static_cast<int>(clock.hours().count()),
        static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
}

TEST(FromUtc, IsTheSameInstantOnAnyMachine) {
    EXPECT_EQ(TimeValue::fromUtc(1994, 11, 6, 8, 49, 37).seconds(), 784'111'777);
    EXPECT_EQ(TimeValue::fromUtc(2005, 7, 23, 19, 54, 28).seconds(), 1'122'148'468);
    EXPECT_EQ(TimeValue::fromUtc(2024, 2, 29, 0, 0, 0).seconds(), utcSeconds(2024, 2, 29));
}

TEST(FromUtc, IsExactInEverySeason) {
    for (std::int32_t t = utcSeconds(2004, 1, 1); t < utcSeconds(2006, 1, 1); t += 7 * 3600 + 1)
        ASSERT_EQ(fromUtcSeconds(t).seconds(), t);
    for (std::int32_t t = utcSeconds(2024, 1, 1); t < utcSeconds(2027, 1, 1); t += 7 * 3600 + 1)
        ASSERT_EQ(fromUtcSeconds(t).seconds(), t);
}

TEST(FromUtc, IsExactAcrossChangesOfTheClock) {
    for (const std::int32_t change : test::clockChanges())
        // The fields are taken for local ones, so the zone's offset widens what must be looked at.
        for (std::int32_t t = change - 16 * 3600; t <= change + 16 * 3600; t += 601)
            ASSERT_EQ(fromUtcSeconds(t).seconds(), t) << change;
}

TEST(FromUtc, IsExactAtBothEndsOfTheRange) {
    // The zone's offset and more, so that the fields of many of these instants are no local time.
    constexpr std::int32_t around = 26 * 3600;
    for (std::int32_t distance = 1; distance <= around; distance += 599) {
        ASSERT_EQ(fromUtcSeconds(distance).seconds(), distance);
        ASSERT_EQ(fromUtcSeconds(largest - distance).seconds(), largest - distance);
    }
    EXPECT_EQ(fromUtcSeconds(largest).seconds(), largest);
}

TEST(FromUtc, BeyondTheEndsOfTheRangeIsNoTime) {
    for (const int beyond : {1, 2, 3599, 3600, 5 * 3600, 13 * 3600, 86400, 86401, 2 * 86400}) {
        EXPECT_EQ(TimeValue::fromUtc(1970, 1, 1, 0, 0, -beyond), TimeValue()) << beyond;
        EXPECT_EQ(TimeValue::fromUtc(2038, 1, 19, 3, 14, 7 + beyond), TimeValue()) << beyond;
    }
}

TEST(FromUtc, RollsFieldsOutOfRangeOver) {
    EXPECT_EQ(TimeValue::fromUtc(2005, 2, 30, 0, 0, 0).seconds(), utcSeconds(2005, 3, 2));
    EXPECT_EQ(TimeValue::fromUtc(2005, 14, 1, 24, 0, 0).seconds(), utcSeconds(2006, 2, 2));
}

TEST(FromUtc, OutsideTheRangeIsNoTime) {
    EXPECT_EQ(TimeValue::fromUtc(1900, 1, 1, 0, 0, 0), TimeValue());
    EXPECT_EQ(TimeValue::fromUtc(2039, 1, 1, 0, 0, 0), TimeValue());
}

// Where it is east of Greenwich, the fields of the instant are those that second 0, which is no time, has in
// local time. Where it is west there is no such instant, and this is just another one of the first hours.
TEST(FromUtc, ReadsTheFirstHoursAsTimes) {
    const std::int32_t secondsWest =
        TimeValue::fromLocal(1970, 1, 3, 0, 0, 0, 0).seconds() - 2 * secondsPerDay;
    const std::int32_t t = std::abs(secondsWest);
    EXPECT_EQ(fromUtcSeconds(t).seconds(), t);
}

} // namespace
} // namespace base
