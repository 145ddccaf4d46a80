#include "lib/base/dates.h"
#include "tests/lib/base/seconds.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace base {
namespace {

using test::utcSeconds;

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

std::int32_t throughUtcFields(std::int32_t t) {
    using namespace std::chrono;
    const sys_seconds instant{seconds(t)};
    const auto date = floor<days>(instant);
    const year_month_day calendar(date);
    const hh_mm_ss clock(instant - date);
    return TimeValue::fromUtc(
               int(calendar.year()), static_cast<int>(unsigned(calendar.month())),
               static_cast<int>(unsigned(calendar.day())), static_cast<int>(clock.hours().count()),
               static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()))
        .seconds();
}

void expectExact(std::int32_t from, std::int32_t to, std::int32_t step) {
    for (std::int64_t t = from; t <= to; t += step)
        ASSERT_EQ(throughUtcFields(static_cast<std::int32_t>(t)), t);
}

TEST(UtcDates, AreExactAcrossSeasonsClockChangesAndBothEndsOfTheRange) {
    EXPECT_EQ(TimeValue::fromUtc(2005, 7, 23, 19, 54, 28).seconds(), 1'122'148'468);
    expectExact(utcSeconds(2004, 1, 1), utcSeconds(2006, 1, 1), 7 * 3600 + 1);
    expectExact(utcSeconds(2024, 1, 1), utcSeconds(2027, 1, 1), 7 * 3600 + 1);
    // fromUtc first treats the fields as local, so the tested range must also cover the zone's offset.
    for (const std::int32_t change : test::clockChanges())
        expectExact(change - 16 * 3600, change + 16 * 3600, 601);
    constexpr std::int32_t around = 26 * 3600;
    expectExact(1, around, 599);
    expectExact(largest - around, largest, 599);
    expectExact(largest, largest, 1);
}

TEST(UtcDates, OutsideTheRangeAreEmpty) {
    for (const int beyond : {1, 2, 3599, 3600, 5 * 3600, 13 * 3600, 86400, 86401, 2 * 86400}) {
        EXPECT_EQ(TimeValue::fromUtc(1970, 1, 1, 0, 0, -beyond), TimeValue()) << beyond;
        EXPECT_EQ(TimeValue::fromUtc(2038, 1, 19, 3, 14, 7 + beyond), TimeValue()) << beyond;
    }
    EXPECT_EQ(TimeValue::fromUtc(1900, 1, 1, 0, 0, 0), TimeValue());
    EXPECT_EQ(TimeValue::fromUtc(2039, 1, 1, 0, 0, 0), TimeValue());
}

TEST(UtcDates, RollOverFieldsOutOfRange) {
    EXPECT_EQ(TimeValue::fromUtc(2005, 2, 30, 0, 0, 0).seconds(), utcSeconds(2005, 3, 2));
    EXPECT_EQ(TimeValue::fromUtc(2005, 14, 1, 24, 0, 0).seconds(), utcSeconds(2006, 2, 2));
}

// East of Greenwich, the UTC fields of this instant equal the local fields of second 0, the empty time.
TEST(UtcDates, InstantWhoseFieldsAreSecond0InLocalTimeIsExact) {
    const std::int32_t t = std::abs(test::localSeconds(1970, 1, 3, 0, 0, 0, 0) - 2 * 86400);
    EXPECT_EQ(throughUtcFields(t), t);
}

} // namespace
} // namespace base
