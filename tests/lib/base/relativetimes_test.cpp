#include "lib/base/formatting.h"
#include "tests/lib/base/seconds.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

namespace base {
namespace {

constexpr std::int32_t hour = 3600;
constexpr std::int32_t day = 24 * hour;

std::vector<TimeValue> nows() {
    std::vector<TimeValue> result;
    const auto addDayOf = [&](std::int32_t t) {
        const std::tm local = test::localFields(t);
        for (const int hourOfDay : {0, 5, 12, 23})
            for (const int minute : {0, 30, 59})
                result.emplace_back(test::localSeconds(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                                                       hourOfDay, minute));
    };
    for (const std::int32_t end : test::calendarEnds())
        if (end < 2'100'000'000)
            addDayOf(end);
    for (const std::int32_t change : test::clockChanges())
        addDayOf(change);
    return result;
}

bool isSameDay(TimeValue a, TimeValue b) {
    const std::tm x = test::localFields(a.seconds());
    const std::tm y = test::localFields(b.seconds());
    return x.tm_yday == y.tm_yday && x.tm_year == y.tm_year;
}

TimeValue later(TimeValue t, std::int32_t seconds) {
    return TimeValue(t.seconds() + seconds);
}

TimeValue local(int year, int month, int dayOfMonth, int hourOfDay, int minute = 0, int second = 0) {
    return TimeValue(test::localSeconds(year, month, dayOfMonth, hourOfDay, minute, second));
}

TEST(RelativeTimes, PatternGivesTheRuntimesTextForTheLocalTime) {
    const TimeValue t = local(2005, 7, 27, 21, 30, 5);
    EXPECT_EQ(formatPattern(t, "%a %b %d"), "Wed Jul 27");
    EXPECT_EQ(formatPattern(t, "%m/%d/%y %I:%M"), "07/27/05 09:30");
    EXPECT_EQ(formatPattern(t, ", %Y-%m-%d %H:%M:%S"), ", 2005-07-27 21:30:05");
    EXPECT_EQ(formatPattern(t, "100%%"), "100%");
    EXPECT_EQ(formatPattern(t, ""), "");
    EXPECT_EQ(formatPattern(TimeValue::never(), "%Y"), "2038");
}

TEST(RelativeTimes, PatternOfAnEmptyOrNegativeTimeIsEmpty) {
    for (const std::int32_t t : {0, -1, std::numeric_limits<std::int32_t>::min()})
        EXPECT_EQ(formatPattern(TimeValue(t), "text %Y"), "") << t;
}

TEST(RelativeTimes, PatternGivesAtMost127Characters) {
    const std::string longest(127, 'x');
    EXPECT_EQ(formatPattern(TimeValue(86400), longest.c_str()), longest);
    EXPECT_LE(formatPattern(TimeValue(86400), (longest + 'x').c_str()).size(), 127U);
}

TEST(RelativeTimes, DayChangesAtMidnightUpToTwoDaysAway) {
    for (const TimeValue now : nows())
        for (std::int32_t offset = -2 * day + 1; offset < 2 * day; offset += 607) {
            const TimeValue t = later(now, offset);
            const bool sameDay = isSameDay(t, now);
            if (offset <= -day && sameDay)
                continue; // a day of 25 hours
            const bool nextDay = offset < day ? !sameDay : isSameDay(t, later(now, day));
            const int expected = offset <= -day  ? -2
                                 : offset >= day ? (nextDay ? 1 : 2)
                                 : sameDay       ? 0
                                                 : (offset > 0 ? 1 : -1);
            ASSERT_EQ(relativeDay(now, t), expected) << now.seconds() << ' ' << offset;
        }
}

TEST(RelativeTimes, DaysAheadAreCounted) {
    const TimeValue now = local(2026, 1, 25, 12);
    for (int days = 2; days < 40; ++days) {
        EXPECT_EQ(relativeDay(now, later(now, days * day)), days);
        EXPECT_EQ(relativeDay(now, later(now, days * day + 11 * hour)), days);
        EXPECT_EQ(relativeDay(now, later(now, days * day + 13 * hour)), days + 1);
    }
}

TEST(RelativeTimes, DaysAgoAreOneTooManyExceptOnTheSameDayOfTheMonth) {
    const TimeValue now = local(2026, 1, 25, 12);
    for (int days = 2; days < 20; ++days)
        EXPECT_EQ(relativeDay(now, later(now, -days * day)), -days - 1);
    EXPECT_EQ(relativeDay(now, local(2025, 12, 25, 12)), -31);
}

TEST(RelativeTimes, DaysAreCountedModulo365) {
    const TimeValue past = local(2025, 7, 10, 12);
    EXPECT_EQ(relativeDay(past, later(past, 364 * day)), 364);
    EXPECT_EQ(relativeDay(past, later(past, 365 * day + 2 * hour)), 0);
    EXPECT_EQ(relativeDay(past, later(past, 366 * day)), 1);
    EXPECT_EQ(formatRelative(later(past, 365 * day + 2 * hour), past), "today at 2:00 PM");
    const TimeValue now = local(2026, 7, 10, 12);
    EXPECT_EQ(relativeDay(now, later(now, -365 * day - 2 * hour)), 0);
    EXPECT_EQ(relativeDay(now, later(now, -365 * day - 13 * hour)), -1);
    // Across 29 February, 365 days end on a different day of the month.
    const TimeValue beforeLeapDay = local(2027, 7, 10, 12);
    EXPECT_EQ(relativeDay(beforeLeapDay, later(beforeLeapDay, 365 * day + 2 * hour)), 1);
}

TEST(RelativeTimes, PhraseIsTheDayOrTheDateWithTheYearUnlessCurrent) {
    const struct {
        TimeValue t, now;
        const char* expected;
    } rows[] = {
        {local(2005, 7, 27, 21, 30), local(2005, 7, 27, 21, 29), "today at 9:30 PM"},
        {local(2005, 7, 28, 0, 30), local(2005, 7, 27, 12), "tomorrow at 12:30 AM"},
        {local(2006, 1, 1, 0, 30), local(2005, 12, 31, 23, 59), "tomorrow at 12:30 AM"},
        {local(2005, 7, 26, 13), local(2005, 7, 27, 12), "yesterday at 1:00 PM"},
        // Any time on the next day is "tomorrow", even if it is more than 24 hours ahead.
        {local(2005, 7, 29, 23, 59), local(2005, 7, 28, 12), "tomorrow at 11:59 PM"},
        {local(2005, 7, 30, 0), local(2005, 7, 28, 12), "Sat Jul 30 at 12:00 AM"},
        // A time more than 24 hours ago gets a date, even if it was yesterday.
        {local(2005, 7, 31, 22), local(2005, 8, 1, 23), "Sun Jul 31 at 10:00 PM"},
        {local(2005, 7, 27, 6), local(2005, 7, 28, 12), "Wed Jul 27 at 6:00 AM"},
        {local(2005, 7, 27, 21, 30), local(2005, 1, 1, 0), "Wed Jul 27 at 9:30 PM"},
        {local(2006, 1, 2, 21, 30), local(2005, 12, 30, 12), "Mon Jan 02, 2006 at 9:30 PM"},
        {local(2004, 12, 31, 8), local(2005, 1, 3, 0), "Fri Dec 31, 2004 at 8:00 AM"},
        // All fields of a negative time are 0.
        {TimeValue(-1), TimeValue(100 * day), " at 12:00 AM"},
        {TimeValue(), local(2005, 7, 27, 12), ""},
    };
    for (const auto& [t, now, expected] : rows)
        EXPECT_EQ(formatRelative(t, now), expected) << t.seconds() << ' ' << now.seconds();
}

} // namespace
} // namespace base
