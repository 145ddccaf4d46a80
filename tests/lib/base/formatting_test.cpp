#include "lib/base/formatting.h"
#include "lib/base/locale.h"
#include "tests/support/allocations.h"
#include "tests/support/instants.h"

#include <gmock/gmock.h>

#include <cstring>
#include <ctime>
#include <limits>
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

// Patterns

TEST(FormatPattern, IsTheRuntimesTextOfTheLocalTime) {
    const TimeValue t = TimeValue::fromLocal(2005, 7, 27, 21, 30, 5, -1);
    EXPECT_EQ(formatPattern(t, "%a %b %d"), "Wed Jul 27");
    EXPECT_EQ(formatPattern(t, ", %Y"), ", 2005");
    EXPECT_EQ(formatPattern(t, "%m/%d/%y %I:%M"), "07/27/05 09:30");
    EXPECT_EQ(formatPattern(t, "%Y-%m-%d %H:%M:%S"), "2005-07-27 21:30:05");
    EXPECT_EQ(formatPattern(t, "100%%"), "100%");
    EXPECT_EQ(formatPattern(t, ""), "");
    EXPECT_EQ(formatPattern(TimeValue::never(), "%Y"), "2038");
}

TEST(FormatPattern, NoTimeAndNegativeTimesAreEmpty) {
    EXPECT_EQ(formatPattern(TimeValue(), "%Y"), "");
    EXPECT_EQ(formatPattern(TimeValue(-1), "%Y"), "");
    EXPECT_EQ(formatPattern(TimeValue(std::numeric_limits<std::int32_t>::min()), "text"), "");
}

TEST(FormatPattern, HoldsAtMost127Characters) {
    const std::string longest(127, 'x');
    EXPECT_EQ(formatPattern(TimeValue(day), longest.c_str()), longest);
    EXPECT_LE(formatPattern(TimeValue(day), (longest + 'x').c_str()).size(), 127U);
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

// Formatting

struct EstimateCase {
    const char* pattern;
    std::size_t textsLength;
    std::size_t expected;
};

TEST(EstimatedLength, AddsWidthAndSixForEachConversion) {
    for (const EstimateCase& row : {
             EstimateCase{"", 0, 0},
             EstimateCase{"text", 0, 4},
             EstimateCase{"%s", 0, 2 + 6},
             EstimateCase{"%s", 100, 2 + 6 + 100},
             EstimateCase{"%d", 0, 2 + 6},
             EstimateCase{"%-10s", 3, 5 + 16 + 3},
             EstimateCase{"%5.2f", 0, 5 + 11},
             EstimateCase{"%.3s", 0, 4 + 9},
             EstimateCase{"%010s", 0, 5 + 16},
             EstimateCase{"%+ #-.0%7s", 0, 10 + 13},
             EstimateCase{"%% %s", 0, 5 + 6},
             EstimateCase{"%%", 0, 2},
             EstimateCase{"%%%%", 0, 4},
             EstimateCase{"%%%s", 0, 4 + 6},
             EstimateCase{"%s at %s", 8, 8 + 12 + 8},
             EstimateCase{"%", 0, 1 + 6},
             EstimateCase{"% %s", 0, 4 + 6},
             EstimateCase{"%12%s", 0, 5 + 18 + 6},
         })
        EXPECT_EQ(detail::estimateFormattedLength(row.pattern, row.textsLength), row.expected) << row.pattern;
}

TEST(EstimatedLength, CountsDoubledPercentSignsAsTwoCharacters) {
    EXPECT_EQ(detail::estimateFormattedLength("100%%", 0), 5U);
}

TEST(EstimatedLength, BeyondItsTypeIsTheLargest) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    const std::string widest = '%' + std::to_string(std::numeric_limits<long>::max()) + 's';
    EXPECT_EQ(detail::estimateFormattedLength((widest + widest).c_str(), 0), most);
    EXPECT_EQ(detail::estimateFormattedLength((widest + widest + widest).c_str(), 0), most);
    EXPECT_EQ(detail::estimateFormattedLength("%s", most), most);
    // Digits beyond the type are read as its largest number.
    EXPECT_EQ(detail::estimateFormattedLength("%99999999999999999999s", 0),
              22 + static_cast<std::size_t>(std::numeric_limits<long>::max()) + 6);
}

TEST(EstimatedLength, CountsOnlyTheFirstNumberOfAConversion) {
    EXPECT_EQ(detail::estimateFormattedLength("%5.200s", 0), 7U + 11);
    EXPECT_EQ(detail::estimateFormattedLength("%s 200", 0), 6U + 6);
    // Flags come before the width; what stands elsewhere in the text counts as text.
    EXPECT_EQ(detail::estimateFormattedLength("+-0 #.12 %s", 0), 11U + 6);
}

TEST(Format, ComposesOneToFourTexts) {
    const std::string a = "one";
    const std::string b = "two";
    const std::string c = "three";
    const std::string d = "four";
    EXPECT_EQ(format("[%s]", a), "[one]");
    EXPECT_EQ(format("%s at %s", a, b), "one at two");
    EXPECT_EQ(format("%s,%s,%s", a, b, c), "one,two,three");
    EXPECT_EQ(format("%s,%s,%s,%s", a, b, c, d), "one,two,three,four");
}

TEST(Format, TakesLiteralsBesideStrings) {
    const std::string name = "News";
    const char* const verb = "ran";
    EXPECT_EQ(format("%s %s %s", name, verb, "today"), "News ran today");
    EXPECT_EQ(format("%s|%s", "", name), "|News");
    // More than the conversions' allowance of six characters each.
    EXPECT_EQ(format("%s", "a rather long literal"), "a rather long literal");
}

TEST(Format, LeavesBytesAboveAsciiAlone) {
    EXPECT_EQ(format("\xE4%s\xFF", std::string("\x80\xDF")), "\xE4\x80\xDF\xFF");
}

TEST(Format, KeepsThePlainText) {
    const std::string a = "x";
    EXPECT_EQ(format("", a), "");
    EXPECT_EQ(format("no conversion", a), "no conversion");
    EXPECT_EQ(format("100%% %s", a), "100% x");
    EXPECT_EQ(format("%s", std::string()), "");
    EXPECT_EQ(format("%s", std::string("%s %d")), "%s %d");
}

TEST(Format, ObeysWidthAndPrecision) {
    const std::string a = "abcdef";
    EXPECT_EQ(format("[%10s]", a), "[    abcdef]");
    EXPECT_EQ(format("[%-10s]", a), "[abcdef    ]");
    EXPECT_EQ(format("[%.3s]", a), "[abc]");
    EXPECT_EQ(format("[%5.2s]", a), "[   ab]");
    EXPECT_EQ(format("[%300s]", a), '[' + std::string(294, ' ') + "abcdef]");
}

TEST(Format, ConversionsBeyondTheTextsAreEmpty) {
    EXPECT_EQ(format("%s|%s|%s|%s|", std::string("a")), "a||||");
    EXPECT_EQ(format("%s|%s|%s|%s|", std::string("a"), std::string("b"), std::string("c")), "a|b|c||");
}

TEST(Format, TakesTextsAsZeroTerminated) {
    EXPECT_EQ(format("%s|", std::string("a\0b", 3)), "a|");
    EXPECT_EQ(format("%s|%s|", std::string("\0b", 2), std::string("c")), "|c|");
}

TEST(Format, HoldsLongTexts) {
    const std::string longText(100'000, 'x');
    EXPECT_EQ(format("<%s|%s>", longText, longText), '<' + longText + '|' + longText + '>');
}

TEST(FormatInto, ReplacesWhatWasThere) {
    std::string out = "something longer than the result";
    EXPECT_TRUE(formatInto(out, "%s", std::string("x")));
    EXPECT_EQ(out, "x");
}

TEST(FormatInto, UsesTheCapacityWhenItSuffices) {
    const std::string text(50, 'x');
    std::string out;
    out.reserve(200);
    const std::size_t before = test::allocationCount;
    const bool done = formatInto(out, "%s and %s", text, text);
    EXPECT_EQ(test::allocationCount, before);
    EXPECT_TRUE(done);
    EXPECT_EQ(out, text + " and " + text);
}

TEST(FormatInto, WithoutMemoryIsEmpty) {
    const std::string text(200, 'x');
    std::string out = "before";
    bool done = true;
    {
        const test::RefusedAllocations refused;
        done = formatInto(out, "%s", text);
    }
    EXPECT_FALSE(done);
    EXPECT_EQ(out, "");
}

TEST(Format, WithoutMemoryIsEmpty) {
    const std::string text(200, 'x');
    std::string out = "before";
    {
        const test::RefusedAllocations refused;
        out = format("%s", text);
    }
    EXPECT_EQ(out, "");
}

TEST(Format, WiderThanAnyStringIsEmpty) {
    const std::string widest = '%' + std::to_string(std::numeric_limits<long>::max()) + 's';
    for (const std::string& pattern : {widest, widest + widest, widest + widest + widest}) {
        std::string out = "before";
        EXPECT_FALSE(formatInto(out, pattern.c_str(), "x")) << pattern;
        EXPECT_EQ(out, "") << pattern;
    }
}

#ifdef _WIN32
TEST(Format, WiderThanTheAddressSpaceHasRoomForIsEmpty) {
    std::string out = "before";
    EXPECT_FALSE(formatInto(out, "%2147480000s", "x"));
    EXPECT_EQ(out, "");
}
#endif

} // namespace
} // namespace base
