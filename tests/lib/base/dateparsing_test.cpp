#include "lib/base/dateparsing.h"
#include "lib/base/formatting.h"
#include "lib/base/sourceregistration.h"
#include "tests/lib/base/seconds.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace base {
namespace {

using test::localSeconds;

TEST(DateParsing, FirstMatchingLayoutDecides) {
    const std::int32_t july = localSeconds(2005, 7, 23);
    const std::int32_t evening = localSeconds(2005, 7, 23, 19, 54, 28);
    const std::int32_t november = 784'111'777;
    // The asctime layout reads "23 jul 2005" as day 2005 of July 2000.
    const std::int32_t day2005 = localSeconds(2000, 7, 2005);
    const struct {
        const char* text;
        std::int32_t internet, asctime, free, expected;
    } rows[] = {
        {"Sun, 06 Nov 1994 08:49:37 GMT", november, 0, localSeconds(2000, 6, 13, 1994, 8, 49), november},
        {"Sat Jul 23 19:54:28 2005", 0, evening, localSeconds(2023, 7, 13, 19, 54, 28), evening},
        {"7/23/2005", 0, 0, july, july},
        {"23-jul-2005", 0, 0, july, july},
        {"23 jul 2005", 0, day2005, july, day2005},
        {"23 july 2005", 0, day2005, 0, day2005},
        {"", 0, 0, 0, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(parseInternetDate(row.text).seconds(), row.internet) << row.text;
        EXPECT_EQ(parseAsctimeDate(row.text).seconds(), row.asctime) << row.text;
        EXPECT_EQ(parseFreeDate(row.text).seconds(), row.free) << row.text;
        EXPECT_EQ(parseDateTime(row.text).seconds(), row.expected) << row.text;
    }
}

/// Whether this clock time occurs twice, half an hour or an hour apart.
bool isRepeated(TimeValue t) {
    const LocalTime fields = t.local();
    for (const TimeSpan apart : {TimeSpan::fromMinutes(30), TimeSpan::fromMinutes(60)})
        if ((t - apart).local() == fields || (t + apart).local() == fields)
            return true;
    return false;
}

void expectReadBack(std::int32_t seconds) {
    const TimeValue t(seconds);
    const LocalTime fields = t.local();
    const std::string shown = formatPattern(t, "%m/%d/%y %I:%M ") + (fields.hour < 12 ? "am" : "pm");
    const std::int32_t read = parseDateTime(shown).seconds();
    ASSERT_EQ(read, localSeconds(fields.year, fields.month, fields.day, fields.hour, fields.minute)) << shown;
    if (!isRepeated(t)) {
        ASSERT_EQ(read, seconds - fields.second) << shown;
    }
}

#ifdef _WIN32
constexpr std::int32_t step = 1;
#else
constexpr std::int32_t step = 7; // the sanitizers are slow
#endif

TEST(DateParsing, FormattedDatesParseToTheSameTime) {
    for (int minute = 0; minute < 1440; minute += step)
        ASSERT_NO_FATAL_FAILURE(expectReadBack(localSeconds(2005, 7, 23, 0, minute, 17)));
    // From 3 January 1970 to the end of 2037, at a different minute each day.
    for (std::int32_t day = 0; day < 24'835; day += step)
        ASSERT_NO_FATAL_FAILURE(expectReadBack((day + 2) * 86400 + day * 61 % 1440 * 60 + day % 60));
    for (std::int32_t t = std::numeric_limits<std::int32_t>::max(); t > 2'147'480'000; t -= 60)
        ASSERT_NO_FATAL_FAILURE(expectReadBack(t));
}

TEST(DateParsing, FormattedDatesNearClockChangesParseToTheSameTime) {
    for (const std::int32_t change : test::clockChanges())
        for (std::int32_t t = change - 3 * 3600; t < change + 3 * 3600; t += 59 * step)
            ASSERT_NO_FATAL_FAILURE(expectReadBack(t));
}

TEST(DateParsing, AcceptsVeryLongTexts) {
    const std::string blanks(10'000, ' ');
    const std::int32_t july = localSeconds(2005, 7, 23);
    EXPECT_EQ(parseDateTime(blanks + "7/23/2005" + blanks).seconds(), july);
    EXPECT_EQ(parseDateTime("7" + blanks + "23" + blanks + "2005").seconds(), july);
    EXPECT_EQ(parseDateTime(std::string(10'000, '1')), TimeValue());
    EXPECT_EQ(parseTimeOfDay(blanks + "9" + blanks + "pm").seconds(), 75'600);
}

TEST(DateParsing, ZeroCharacterEndsOnlyItsNumber) {
    using namespace std::string_literals;
    EXPECT_EQ(parseFreeDate("7\0"
                            "5/23/2005"s)
                  .seconds(),
              localSeconds(2005, 7, 23));
    EXPECT_EQ(parseDateTime("\0\0"s), TimeValue());
}

TEST(DateParsing, BuildTimeIsTheNewestRegisteredSourceTime) {
    const TimeValue release = buildTime();
    EXPECT_EQ(formatPattern(release, "%b %d %Y %H:%M:%S"), RELEASE_DATE) << "the library's own sources";
    EXPECT_TRUE(registerSourceFile("older.cpp", "Jul 23 2005 19:54:31"));
    EXPECT_EQ(buildTime(), release);
    EXPECT_TRUE(registerSourceFile("garbage.cpp", "one of these days"));
    EXPECT_EQ(buildTime(), release);
    EXPECT_TRUE(registerSourceFile("newer.cpp", "Jan  2 2037 03:04:05"));
    EXPECT_EQ(buildTime().seconds(), localSeconds(2037, 1, 2, 3, 4, 5));
}

} // namespace
} // namespace base
