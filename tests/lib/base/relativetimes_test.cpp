#include "lib/base/formatting.h"
#include "lib/base/locale.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace base {
namespace {

constexpr std::int32_t hour = 3600;
constexpr std::int32_t day = 24 * hour;

/// Noon and the moments around midnight, of days at whose ends months, years and the clock change.
std::vector<TimeValue> nows() {
    std::vector<TimeValue> result;
    const auto addDayOf = [&](std::int32_t t) {
        const LocalTime local = TimeValue(t).local();
        for (const int hourOfDay : {0, 5, 12, 23})
            for (const int minute : {0, 30, 59})
                result.push_back(
                    TimeValue::fromLocal(local.year, local.month, local.day, hourOfDay, minute, 0, -1));
    };
    for (const std::int32_t end : test::calendarEnds())
        if (end < 2'100'000'000)
            addDayOf(end);
    for (const std::int32_t change : test::clockChanges())
        addDayOf(change);
    return result;
}

int dayNumber(const LocalTime& local) {
    return local.year * 10'000 + local.month * 100 + local.day;
}

int dayNumber(TimeValue t) {
    return dayNumber(t.local());
}

TimeValue later(TimeValue t, std::int32_t seconds) {
    return TimeValue(t.seconds() + seconds);
}

TimeValue localTime(int year, int month, int dayOfMonth, int hourOfDay, int minute = 0) {
    return TimeValue::fromLocal(year, month, dayOfMonth, hourOfDay, minute, 0, -1);
}

std::string clockText(TimeValue t) {
    return formatLocaleTime(t, false, true);
}

// Relative days

TEST(RelativeDay, FollowsMidnightsWithinADay) {
    for (const TimeValue now : nows())
        for (std::int32_t offset = -day + 1; offset < day; offset += 607) {
            const TimeValue t = later(now, offset);
            const int expected = dayNumber(t) == dayNumber(now) ? 0 : offset > 0 ? 1 : -1;
            ASSERT_EQ(relativeDay(now, t), expected) << now.seconds() << ' ' << offset;
        }
}

TEST(RelativeDay, TimeBetween24And48HoursAgoIsMinusTwo) {
    for (const TimeValue now : nows())
        for (std::int32_t offset = -2 * day + 1; offset <= -day; offset += 607) {
            const TimeValue t = later(now, offset);
            // On a day of 25 hours what was 24 hours ago may be the same day.
            if (dayNumber(t) == dayNumber(now))
                continue;
            ASSERT_EQ(relativeDay(now, t), -2) << now.seconds() << ' ' << offset;
        }
}

TEST(RelativeDay, TimeBetween24And48HoursAheadIsTwoOnTheDayAfterTomorrow) {
    for (const TimeValue now : nows())
        for (std::int32_t offset = day; offset < 2 * day; offset += 607) {
            const TimeValue t = later(now, offset);
            const int expected = dayNumber(t) == dayNumber(later(now, day)) ? 1 : 2;
            ASSERT_EQ(relativeDay(now, t), expected) << now.seconds() << ' ' << offset;
        }
}

TEST(RelativeDay, CountsDaysAhead) {
    const TimeValue now = localTime(2026, 1, 25, 12);
    for (int days = 2; days < 40; ++days) {
        EXPECT_EQ(relativeDay(now, later(now, days * day)), days);
        EXPECT_EQ(relativeDay(now, later(now, days * day + 11 * hour)), days);
        EXPECT_EQ(relativeDay(now, later(now, days * day + 13 * hour)), days + 1);
    }
}

TEST(RelativeDay, CountsOneTooManyBackwards) {
    const TimeValue now = localTime(2026, 1, 25, 12);
    for (int days = 2; days < 20; ++days)
        EXPECT_EQ(relativeDay(now, later(now, -days * day)), -days - 1);
    // Only the day of the month is compared: on the same one of another month the count is as it is.
    EXPECT_EQ(relativeDay(now, localTime(2025, 12, 25, 12)), -31);
}

TEST(RelativeDay, TimeAYearAndTwoHoursAheadIsToday) {
    const TimeValue now = localTime(2025, 7, 10, 12);
    const TimeValue t = later(now, 365 * day + 2 * hour);
    EXPECT_EQ(relativeDay(now, t), 0);
    EXPECT_EQ(formatRelative(t, now), "today at " + clockText(t));
    EXPECT_EQ(relativeDay(now, later(now, 364 * day)), 364);
    EXPECT_EQ(relativeDay(now, later(now, 366 * day)), 1);
}

TEST(RelativeDay, TimeAYearAgoOnTheSameDayOfTheMonthIsToday) {
    const TimeValue now = localTime(2026, 7, 10, 12);
    EXPECT_EQ(relativeDay(now, later(now, -365 * day - 2 * hour)), 0);
    EXPECT_EQ(relativeDay(now, later(now, -365 * day - 13 * hour)), -1);
    EXPECT_EQ(relativeDay(now, later(now, -366 * day)), -2);
}

TEST(RelativeDay, ComparesTheDayOfTheMonthWithTheDayReached) {
    // Across 29 February the year ahead ends on another day of the month.
    const TimeValue now = localTime(2027, 7, 10, 12);
    EXPECT_EQ(relativeDay(now, later(now, 365 * day + 2 * hour)), 1);
}

// Relative phrases

TEST(FormatRelative, OfANegativeTimeHasNeitherDateNorYear) {
    // All its calendar fields are 0, and so is its time of day.
    EXPECT_EQ(formatLocaleDate(TimeValue(-1), false), "");
    EXPECT_EQ(clockText(TimeValue(-1)), "12:00 AM");
    EXPECT_EQ(formatRelative(TimeValue(-1), TimeValue(100 * day)), " at 12:00 AM");
}

TEST(FormatRelative, OfNoTimeIsEmpty) {
    EXPECT_EQ(formatRelative(TimeValue(), localTime(2005, 7, 27, 12)), "");
    EXPECT_EQ(formatRelative(TimeValue(), TimeValue()), "");
}

TEST(FormatRelative, MinuteAheadIsToday) {
    const TimeValue now = localTime(2005, 7, 27, 21, 29);
    const TimeValue t = later(now, 60);
    EXPECT_EQ(formatRelative(t, now), "today at " + clockText(t));
    EXPECT_EQ(formatRelative(now, now), "today at " + clockText(now));
}

TEST(FormatRelative, HalfPastMidnightIsTomorrow) {
    for (const TimeValue now : {localTime(2005, 7, 27, 12), localTime(2005, 12, 31, 23, 59)}) {
        const LocalTime local = now.local();
        const TimeValue t = localTime(local.year, local.month, local.day + 1, 0, 30);
        EXPECT_EQ(formatRelative(t, now), "tomorrow at " + clockText(t));
    }
}

TEST(FormatRelative, TwentyThreeHoursAgoIsYesterday) {
    for (const TimeValue now : {localTime(2005, 7, 27, 12), localTime(2006, 1, 1, 20)}) {
        const TimeValue t = later(now, -23 * hour);
        EXPECT_EQ(formatRelative(t, now), "yesterday at " + clockText(t));
    }
}

TEST(FormatRelative, ThirtyHoursAgoIsDated) {
    const TimeValue now = localTime(2005, 7, 28, 12);
    const TimeValue t = later(now, -30 * hour);
    EXPECT_EQ(formatRelative(t, now), "Wed Jul 27 at " + clockText(t));
}

TEST(FormatRelative, OverADayAheadIsDatedOnceTomorrowIsOver) {
    const TimeValue now = localTime(2005, 7, 28, 12);
    EXPECT_EQ(formatRelative(localTime(2005, 7, 29, 23, 59), now),
              "tomorrow at " + clockText(localTime(2005, 7, 29, 23, 59)));
    EXPECT_EQ(formatRelative(localTime(2005, 7, 30, 0), now),
              "Sat Jul 30 at " + clockText(localTime(2005, 7, 30, 0)));
}

TEST(FormatRelative, OverADayAgoIsDatedEvenOfYesterday) {
    // 25 hours, and the day before by the calendar.
    const TimeValue now = localTime(2005, 8, 1, 23);
    const TimeValue t = later(now, -25 * hour);
    EXPECT_EQ(formatRelative(t, now), "Sun Jul 31 at " + clockText(t));
}

TEST(FormatRelative, SameYearIsNotTold) {
    const TimeValue t = localTime(2005, 7, 27, 21, 30);
    EXPECT_EQ(formatRelative(t, localTime(2005, 1, 1, 0)), "Wed Jul 27 at " + clockText(t));
    EXPECT_EQ(formatRelative(t, localTime(2005, 12, 31, 23)), "Wed Jul 27 at " + clockText(t));
}

TEST(FormatRelative, AnotherYearIsTold) {
    const TimeValue t = localTime(2006, 1, 2, 21, 30);
    EXPECT_EQ(formatRelative(t, localTime(2005, 12, 30, 12)), "Mon Jan 02, 2006 at " + clockText(t));
    EXPECT_EQ(formatRelative(localTime(2004, 12, 31, 8), localTime(2005, 1, 3, 0)),
              "Fri Dec 31, 2004 at " + clockText(localTime(2004, 12, 31, 8)));
}

// What the user's locale has to say about the clock is the platform's; these say where it stands.

TEST(FormatRelative, ShowsHoursAndMinutes) {
    const TimeValue now = TimeValue::fromLocal(2005, 7, 27, 21, 30, 44, -1);
    EXPECT_EQ(clockText(now), clockText(later(now, -44)));
    EXPECT_EQ(formatRelative(now, now), formatRelative(later(now, -44), now));
}

} // namespace
} // namespace base
