#include "lib/base/dateparsing.h"
#include "lib/base/formatting.h"
#include "lib/base/sourceregistration.h"
#include "tests/lib/base/dateparsingrows.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace base {
namespace {

using test::Fields;
using test::longNames;
using test::none;
using test::shortNames;
using test::upper;

// The chain

TEST(DateTime, IsTheFirstLayoutThatFits) {
    const TimeValue july = Fields{2005, 7, 23}.value();
    struct ChainRow {
        const char* text;
        TimeValue internet, asctime, free, chain;
    };
    const TimeValue november = TimeValue(784111777);
    const std::vector<ChainRow> rows = {
        {"Sun, 06 Nov 1994 08:49:37 GMT", november, none, Fields{2000, 6, 13, 1994, 8, 49}.value(), november},
        {"Sat Jul 23 19:54:28 2005", none, Fields{2005, 7, 23, 19, 54, 28}.value(),
         Fields{2023, 7, 13, 19, 54, 28}.value(), Fields{2005, 7, 23, 19, 54, 28}.value()},
        {"7/23/2005", none, none, july, july},
        {"jul 23 2005", none, none, july, july},
        {"13/1/2005", none, none, Fields{2005, 1, 13}.value(), Fields{2005, 1, 13}.value()},
        {"jan 5 05", none, none, Fields{2005, 1, 5}.value(), Fields{2005, 1, 5}.value()},
        // asctime's layout takes the year for the day of the month, of July 2000.
        {"23 jul 2005", none, Fields{2000, 7, 2005}.value(), july, Fields{2000, 7, 2005}.value()},
        {"23 july 2005", none, Fields{2000, 7, 2005}.value(), none, Fields{2000, 7, 2005}.value()},
        {"5 january 2005", none, Fields{2000, 1, 2005}.value(), Fields{2005, 4, 30}.value(),
         Fields{2000, 1, 2005}.value()},
        {"23-jul-2005", none, none, july, july},
        {"", none, none, none, none},
    };
    for (const ChainRow& row : rows) {
        EXPECT_EQ(parseInternetDate(row.text), row.internet) << row.text;
        EXPECT_EQ(parseAsctimeDate(row.text), row.asctime) << row.text;
        EXPECT_EQ(parseDateTime(row.text), row.chain) << row.text;
        EXPECT_EQ(parseFreeDate(row.text), row.free) << row.text;
    }
}

/// What a field for a date and a time shows.
std::string shown(TimeValue t) {
    return formatPattern(t, "%m/%d/%y %I:%M ") + (t.hour() < 12 ? "am" : "pm");
}

/// Whether the same clock time comes twice, half an hour or an hour apart.
bool isRepeated(TimeValue t) {
    const LocalTime fields = t.local();
    for (const TimeSpan apart : {TimeSpan::fromMinutes(30), TimeSpan::fromMinutes(60)})
        if ((t - apart).local() == fields || (t + apart).local() == fields)
            return true;
    return false;
}

void expectReadBack(TimeValue t) {
    const LocalTime fields = t.local();
    const TimeValue read = parseDateTime(shown(t));
    ASSERT_EQ(read, (Fields{fields.year, fields.month, fields.day, fields.hour, fields.minute}.value()))
        << shown(t);
    if (!isRepeated(t)) {
        ASSERT_EQ(read.seconds(), t.seconds() - fields.second) << shown(t);
    }
}

TEST(DateTime, ReadsBackEveryMinuteOfADay) {
    for (int minute = 0; minute < 1440; ++minute)
        ASSERT_NO_FATAL_FAILURE(expectReadBack(Fields{2005, 7, 23, 0, minute, 17}.value()));
}

TEST(DateTime, ReadsBackEveryDay) {
    // Another minute each day, so that all of them are come by.
    constexpr std::int32_t from = 2 * 86400; // 1970 in every zone
    constexpr std::int32_t end = 2'145'916'800;
    for (std::int32_t day = 0; from + day * 86400 < end; ++day)
        ASSERT_NO_FATAL_FAILURE(
            expectReadBack(TimeValue(from + day * 86400 + day * 61 % 1440 * 60 + day % 60)));
}

TEST(DateTime, ReadsBackTheNightsInWhichTheClockChanges) {
    for (const std::int32_t change : test::clockChanges())
        for (std::int32_t t = change - 3 * 3600; t < change + 3 * 3600; t += 59)
            ASSERT_NO_FATAL_FAILURE(expectReadBack(TimeValue(t)));
}

TEST(DateTime, ReadsBackTheLastMinutesOfTheRange) {
    for (std::int32_t t = std::numeric_limits<std::int32_t>::max(); t > 2'147'480'000; t -= 60)
        ASSERT_NO_FATAL_FAILURE(expectReadBack(TimeValue(t)));
}

// Texts that nobody would type

TEST(DateTime, ComposedAtRandomItIsWhatWasComposed) {
    std::mt19937 random(20050723);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    const std::string separators = " /-#.\\:";
    const auto separator = [&] {
        std::string run(static_cast<std::size_t>(pick(1, 3)), ' ');
        std::ranges::generate(run, [&] { return separators[static_cast<std::size_t>(pick(0, 6))]; });
        return run;
    };
    for (int i = 0; i < 3000; ++i) {
        const Fields fields{pick(1971, 2037), pick(1, 12), pick(1, 28),
                            pick(0, 23),      pick(0, 59), pick(0, 59)};
        const bool named = pick(0, 1) != 0;
        const auto index = static_cast<std::size_t>(fields.month - 1);
        const std::string month =
            named ? pick(0, 1) ? shortNames[index] : longNames[index] : std::to_string(fields.month);
        const std::string text = month + separator() + std::to_string(fields.day) + separator() +
                                 std::to_string(fields.year) + separator() + std::to_string(fields.hour) +
                                 separator() + std::to_string(fields.minute) + separator() +
                                 std::to_string(fields.second);
        ASSERT_EQ(parseFreeDate(text), fields.value()) << text;
        ASSERT_EQ(parseFreeDate('\t' + text + " \n"), fields.value()) << text;
    }
}

TEST(DateTime, GarbageOfEveryLengthIsReadWithinTheRules) {
    std::mt19937 random(4711);
    const auto pick = [&](std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    };
    const std::vector<std::string> words = {
        "jan",  "july",       "dec", "gmt", "utc", "pm", "a.m", "Sun,", "2005", "1994", "23", "7",  "0", "-1",
        "2038", "9999999999", " ",   "/",   "-",   ":",  ",",   ".",    "\\",   "#",    "\t", "\n", "x"};
    std::size_t dates = 0;
    for (std::size_t length = 0; length < 400; ++length)
        for (int kind = 0; kind < 8; ++kind) {
            std::string text;
            while (text.size() < length)
                if (kind == 0)
                    text += static_cast<char>(pick(256));
                else
                    text += words[pick(words.size())] + (kind < 3 ? "" : " ");
            text.resize(length);
            SCOPED_TRACE(text);
            const TimeValue internet = parseInternetDate(text);
            const TimeValue asctime = parseAsctimeDate(text);
            const TimeValue free = parseFreeDate(text);
            const TimeValue chain = internet != none ? internet : asctime != none ? asctime : free;
            ASSERT_EQ(parseDateTime(text), chain);
            ASSERT_EQ(parseDateTime(upper(text)), chain) << "case does not count";
            ASSERT_EQ(parseDateTime(" \t" + text + "\f\r\n "), chain) << "white space around does not count";
            parseTimeOfDay(text);
            dates += free != none;
        }
    EXPECT_GT(dates, 50U) << "some are dates all the same";
}

TEST(DateTime, VeryLongTextsAreReadInOneGo) {
    constexpr std::size_t length = 50'000;
    for (const char* unit :
         {" ", "-", "1", "0", "a", "jan ", "p.", "1 ", "1:", ", ", "\\", "\xff", "7/", "gmt", "am"}) {
        std::string text;
        while (text.size() < length)
            text += unit;
        const std::string inside = "x" + text + "x";
        for (const std::string& each : {text, inside}) {
            EXPECT_EQ(parseDateTime(each).seconds() < 0, false) << unit;
            parseTimeOfDay(each);
        }
    }
    const std::string blanks(length, ' ');
    EXPECT_EQ(parseDateTime(blanks + "7/23/2005" + blanks), (Fields{2005, 7, 23}.value()));
    EXPECT_EQ(parseDateTime("7" + blanks + "23" + blanks + "2005"), (Fields{2005, 7, 23}.value()));
}

TEST(DateTime, ZerosInsideATextEndNothingButTheirNumber) {
    using namespace std::string_literals;
    EXPECT_EQ(parseFreeDate("7\0"
                            "5/23/2005"s),
              (Fields{2005, 7, 23}.value()));
    EXPECT_EQ(parseDateTime("\0\0"s), none);
}

// The sources' own dates

TEST(BuildTime, IsTheLatestOfTheRegisteredSources) {
    const TimeValue release = parseFreeDate(RELEASE_DATE);
    ASSERT_NE(release, none);
    EXPECT_EQ(buildTime(), release) << "the library's own sources";
    EXPECT_TRUE(registerSourceFile("older.cpp", "Jul 23 2005 19:54:31"));
    EXPECT_EQ(buildTime(), release);
    EXPECT_TRUE(registerSourceFile("garbage.cpp", "one of these days"));
    EXPECT_EQ(buildTime(), release);
    EXPECT_TRUE(registerSourceFile("newer.cpp", "Jan  2 2037 03:04:05"));
    EXPECT_EQ(buildTime(), (Fields{2037, 1, 2, 3, 4, 5}.value()));
}

} // namespace
} // namespace base
