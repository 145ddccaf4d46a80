#include "lib/base/dateparsing.h"
#include "lib/base/formatting.h"
#include "tests/support/instants.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace base {

void PrintTo(TimeValue t, std::ostream* out) {
    *out << t.seconds() << " (" << formatPattern(t, "%Y-%m-%d %H:%M:%S") << ')';
}

namespace {

using Parser = TimeValue (*)(std::string_view);

/// Local fields as they are given to the runtime, which rolls over those that are out of range.
struct Fields {
    int year, month, day, hour = 0, minute = 0, second = 0;

    TimeValue value(int isDst = -1) const {
        return TimeValue::fromLocal(year, month, day, hour, minute, second, isDst);
    }
};

struct Row {
    std::string text;
    TimeValue expected;
};

void expectAll(Parser parse, const std::vector<Row>& rows) {
    for (const Row& row : rows)
        EXPECT_EQ(parse(row.text), row.expected) << '"' << row.text << '"';
}

const TimeValue none;

const char* const shortNames[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                  "jul", "aug", "sep", "oct", "nov", "dec"};
const char* const longNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};

std::string upper(std::string text) {
    for (char& character : text)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

// The internet layout

TEST(InternetDate, ATextInGmtIsTheSameInstantOnAnyMachine) {
    expectAll(parseInternetDate,
              {
                  {"Sun, 06 Nov 1994 08:49:37 GMT", TimeValue(784111777)},
                  {"Sunday, 06-Nov-94 08:49:37 GMT", TimeValue(784111777)},
                  {"Sun, 06 Nov 1994 08:49:37 UTC", TimeValue(784111777)},
                  {"sun, 6 november 1994 8:49:37 utc", TimeValue(784111777)},
                  {" \r\n\t\fSun, 06 Nov 1994 08:49:37 GMT \r\n\t\f", TimeValue(784111777)},
                  {"Sun, 06 Nov 1994 08:49:37GmT", TimeValue(784111777)},
                  {"Sat, 23 Jul 2005 19:54:28 GMT", TimeValue(1122148468)},
                  {"Mon, 18 Jan 2038 00:00:00 GMT", TimeValue(2147385600)},
              });
}

TEST(InternetDate, WithoutGmtAtItsEndItIsLocalStandardTimeEvenInSummer) {
    expectAll(parseInternetDate,
              {
                  {"Sun, 06 Nov 1994 08:49:37", Fields{1994, 11, 6, 8, 49, 37}.value(0)},
                  {"Sat, 23 Jul 2005 19:54:28", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
                  {"Sun, 23 Jan 2005 19:54:28", Fields{2005, 1, 23, 19, 54, 28}.value(0)},
                  {"Sat, 23 Jul 2005 19:54:28 EST", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
                  {"GMT, 23 Jul 2005 19:54:28 x", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
                  {"Sat, 23 Jul 2005 19:54:28 +0200", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
                  {"Sat, 23 Jul 2005 19:54:28 -0500", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
                  {"Sat, 23 Jul 2005 19:54:28 +0200 (CEST)", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
                  {"Sat, 23 Jul 2005 19:54:28 (GMT)", Fields{2005, 7, 23, 19, 54, 28}.value(0)},
              });
}

TEST(InternetDate, TheDayIsOneToThirtyOneAndTheMonthAName) {
    expectAll(parseInternetDate, {
                                     {"Sun, 0 Nov 1994 08:49:37 GMT", none},
                                     {"Sun, 1 Nov 1994 00:00:00 GMT", TimeValue(783648000)},
                                     {"Sun, 31 Oct 1994 00:00:00 GMT", TimeValue(783561600)},
                                     {"Sun, 32 Oct 1994 00:00:00 GMT", none},
                                     {"Sun, -6 Nov 1994 08:49:37 GMT", none},
                                     {"Sun, x Nov 1994 08:49:37 GMT", none},
                                     {"Sun, 06 Nev 1994 08:49:37 GMT", none},
                                     {"Sun, 06 no 1994 08:49:37 GMT", none},
                                     {"Sun, 06", none},
                                     {"Sun", none},
                                     {"", none},
                                 });
}

TEST(InternetDate, AMonthIsAnyWordThatBeginsWithItsName) {
    for (int i = 0; i < 12; ++i)
        for (const std::string& name : {std::string(shortNames[i]), std::string(longNames[i]),
                                        upper(longNames[i]), shortNames[i] + std::string("x9")}) {
            const TimeValue expected = TimeValue::fromUtc(2005, i + 1, 15, 1, 2, 3);
            EXPECT_EQ(parseInternetDate("Mon, 15 " + name + " 2005 01:02:03 GMT"), expected) << name;
            EXPECT_EQ(parseInternetDate("Mon, 15-" + name + "-05 01:02:03 GMT"), expected) << name;
        }
}

TEST(InternetDate, EverySeparatorCutsAndSoDoRunsOfThem) {
    for (const std::string one : {" ", ",", ", ", ",,  "})
        for (const std::string two : {" ", "-", " - ", "--"})
            for (const std::string three : {":", " ", "-", " : "})
                EXPECT_EQ(parseInternetDate("Sun" + one + "06" + two + "Nov" + two + "1994 08" + three +
                                            "49" + three + "37 GMT"),
                          // Where nothing but commas stands after the weekday, the time's pieces move by one.
                          one == "," ? TimeValue::fromUtc(1994, 11, 6, 49, 37, 0) : TimeValue(784111777))
                    << '"' << one << two << three << '"';
}

TEST(InternetDate, YearsBelowAHundredAreWidened) {
    const std::pair<const char*, int> rows[] = {{"69", 2069},   {"70", 1970},   {"94", 1994},   {"99", 1999},
                                                {"00", 2000},   {"05", 2005},   {"37", 2037},   {"100", 100},
                                                {"1999", 1999}, {"2038", 2038}, {"2039", 2039}, {"+5", 2005}};
    for (const auto& [year, expected] : rows)
        EXPECT_EQ(parseInternetDate(std::string("Mon, 05 Jan ") + year + " 12:00:00 GMT"),
                  TimeValue::fromUtc(expected, 1, 5, 12, 0, 0))
            << year;
    EXPECT_EQ(parseInternetDate("Sun, 06 Nov"), (Fields{2000, 11, 6}.value(0))) << "no year reads as 0";
}

// The layout of asctime

TEST(AsctimeDate, IsLocalTime) {
    expectAll(parseAsctimeDate,
              {
                  {"Sun Nov 6 08:49:37 1994", Fields{1994, 11, 6, 8, 49, 37}.value()},
                  {"Sat Jul 23 19:54:28 2005", Fields{2005, 7, 23, 19, 54, 28}.value()},
                  {"sat july 23 19:54:28 05", Fields{2005, 7, 23, 19, 54, 28}.value()},
                  {"\tSat JUL 23 19:54:28 2005\r\n", Fields{2005, 7, 23, 19, 54, 28}.value()},
                  {"Sat Jul 23 19 54:28   2005", Fields{2005, 7, 23, 19, 54, 28}.value()},
              });
}

TEST(AsctimeDate, ADayThatTheRuntimePaddedFails) {
    EXPECT_EQ(parseAsctimeDate("Sun Nov  6 08:49:37 1994"), none);
}

TEST(AsctimeDate, WantsADayAndAMonth) {
    expectAll(parseAsctimeDate, {
                                    {"Sun Nov 0 08:49:37 1994", none},
                                    {"Sun Nov x 08:49:37 1994", none},
                                    {"Sun 11 6 08:49:37 1994", none},
                                    {"Sun,Nov,6,08:49:37,1994", none},
                                    {"Sun Nov", none},
                                    {"Sun", none},
                                    {"", none},
                                });
}

TEST(AsctimeDate, DoesNotLimitTheDay) {
    expectAll(parseAsctimeDate, {
                                    {"Sun Nov 40 08:49:37 1994", Fields{1994, 12, 10, 8, 49, 37}.value()},
                                    {"Sun Nov -1 08:49:37 1994", Fields{1994, 10, 30, 8, 49, 37}.value()},
                                });
}

TEST(AsctimeDate, AMonthIsAnyWordThatBeginsWithItsName) {
    for (int i = 0; i < 12; ++i)
        for (const std::string& name :
             {std::string(shortNames[i]), std::string(longNames[i]), upper(shortNames[i])})
            EXPECT_EQ(parseAsctimeDate("Mon " + name + " 15 12:02:03 2005"),
                      (Fields{2005, i + 1, 15, 12, 2, 3}.value()))
                << name;
}

TEST(AsctimeDate, YearsBelowAHundredAreWidened) {
    const std::pair<const char*, int> rows[] = {{"69", 2069},   {"70", 1970}, {"99", 1999},  {"0", 2000},
                                                {"37", 2037},   {"", 2000},   {"100", 100},  {"2037", 2037},
                                                {"2039", 2039}, {"-5", 1995}, {"-30", 1970}, {"-31", 1969}};
    for (const auto& [year, expected] : rows)
        EXPECT_EQ(parseAsctimeDate(std::string("Mon Jan 5 12:00:00 ") + year),
                  (Fields{expected, 1, 5, 12}.value()))
            << year;
}

// The tolerant layout

TEST(FreeDate, TheMonthComesFirstUnlessItCannotBeOne) {
    expectAll(parseFreeDate, {
                                 {"13/1/2005", Fields{2005, 1, 13}.value()},
                                 {"1/13/2005", Fields{2005, 1, 13}.value()},
                                 {"12/12/2005", Fields{2005, 12, 12}.value()},
                                 {"12/11/2005", Fields{2005, 12, 11}.value()},
                                 {"11/12/2005", Fields{2005, 11, 12}.value()},
                                 {"13/12/2005", Fields{2005, 12, 13}.value()},
                                 {"13/13/2005", none},
                                 {"31/12/2005", Fields{2005, 12, 31}.value()},
                                 {"32/12/2005", none},
                                 {"12/31/2005", Fields{2005, 12, 31}.value()},
                                 {"12/32/2005", none},
                                 {"2/30/2005", Fields{2005, 3, 2}.value()},
                                 {"23.7.05", Fields{2005, 7, 23}.value()},
                                 {"7/23/2005 7:54 pm", Fields{2005, 7, 23, 19, 54}.value()},
                             });
}

TEST(FreeDate, NamedMonths) {
    expectAll(parseFreeDate, {
                                 {"jan 5 05", Fields{2005, 1, 5}.value()},
                                 {"jul 23 2005", Fields{2005, 7, 23}.value()},
                                 {"july 23 2005", Fields{2005, 7, 23}.value()},
                                 {"Jul 23 2005 19:54:31", Fields{2005, 7, 23, 19, 54, 31}.value()},
                                 {"Jul  3 2005 19:54:31", Fields{2005, 7, 3, 19, 54, 31}.value()},
                                 {"23 jul 2005", Fields{2005, 7, 23}.value()},
                                 {"23 jul 2005 19:54:28", Fields{2005, 7, 23, 19, 54, 28}.value()},
                                 {"23-JUL-05", Fields{2005, 7, 23}.value()},
                                 {"may 5 05", Fields{2005, 5, 5}.value()},
                             });
}

TEST(FreeDate, AfterItsDayAMonthIsNamedByThreeLettersOnly) {
    expectAll(parseFreeDate, {
                                 {"23 july 2005", none},
                                 {"23 ju 2005", none},
                                 {"23 jul. 2005", Fields{2005, 7, 23}.value()},
                                 // Month 5 from the number, day 0 from the word.
                                 {"5 january 2005", Fields{2005, 4, 30}.value()},
                                 {"5 jan 2005", Fields{2005, 4, 30}.value()},
                                 {"12 jan 2005", Fields{2005, 11, 30}.value()},
                                 {"13 jan 2005", Fields{2005, 1, 13}.value()},
                             });
}

TEST(FreeDate, EveryNameInEveryPlace) {
    for (int i = 0; i < 12; ++i) {
        const TimeValue expected = Fields{2005, i + 1, 15, 12, 2, 3}.value();
        for (const std::string& name : {std::string(shortNames[i]), upper(shortNames[i]),
                                        std::string(longNames[i]), upper(longNames[i])})
            EXPECT_EQ(parseFreeDate(name + " 15 2005 12:02:03"), expected) << name;
        EXPECT_EQ(parseFreeDate(std::string("15 ") + shortNames[i] + " 2005 12:02:03"), expected);
        EXPECT_EQ(parseFreeDate("15 " + upper(shortNames[i]) + " 2005 12:02:03"), expected);
        if (std::string(longNames[i]).size() > 3) {
            EXPECT_EQ(parseFreeDate(std::string("15 ") + longNames[i] + " 2005 12:02:03"), none);
        }
    }
}

TEST(FreeDate, AWordThatNamesNoMonthStandsForOneTooMany) {
    expectAll(parseFreeDate, {
                                 // So the number behind it is taken for the month and the day becomes 13.
                                 {"xyz 5 2005", Fields{2005, 5, 13}.value()},
                                 {"xyz 13 2005", none},
                                 {"/5/2005", Fields{2005, 5, 13}.value()},
                                 {"xyz jul 2005", Fields{2005, 7, 13}.value()},
                                 {"xyz", none},
                                 {"0/5/2005", Fields{2005, 5, 13}.value()},
                             });
}

TEST(FreeDate, DayZeroIsTheLastOfTheMonthBefore) {
    expectAll(parseFreeDate, {
                                 {"3/0/2005", Fields{2005, 2, 28}.value()},
                                 {"3/0/2004", Fields{2004, 2, 29}.value()},
                                 {"1/0/2005", Fields{2004, 12, 31}.value()},
                                 {"3", Fields{2000, 2, 29}.value()},
                             });
}

TEST(FreeDate, EverySeparatorCutsAndSoDoRunsOfThem) {
    const TimeValue expected = Fields{2005, 7, 23, 19, 54, 28}.value();
    for (const std::string separator : {" ", "/", "-", "#", ".", "\\", ":", "  ", " / ", "-#.\\: /"}) {
        std::string text = "7";
        for (const char* number : {"23", "2005", "19", "54", "28"})
            text += separator + number;
        EXPECT_EQ(parseFreeDate(text), expected) << text;
        EXPECT_EQ(parseFreeDate(text + separator), expected) << text;
    }
    for (const char other : {',', ';', '\t', '_', '+', '|', '"', ']', '['})
        EXPECT_EQ(parseFreeDate(std::string("7") + other + "23" + other + "2005"),
                  (Fields{2000, 6, 30}.value()))
            << "\"" << other << "\" does not separate";
}

TEST(FreeDate, HalvesOfTheDay) {
    const auto at = [](int hour, int minute) { return Fields{2005, 7, 23, hour, minute}.value(); };
    expectAll(parseFreeDate, {
                                 {"7/23/2005 12:30 am", at(0, 30)},
                                 {"7/23/2005 12:30 pm", at(12, 30)},
                                 {"7/23/2005 12:30 a.m.", at(0, 30)},
                                 {"7/23/2005 12:30 p.m.", at(12, 30)},
                                 {"7/23/2005 12:30 AM", at(0, 30)},
                                 {"7/23/2005 7:54 P.M", at(19, 54)},
                                 {"7/23/2005 7:54 am", at(7, 54)},
                                 {"7/23/2005 7:54pm", at(19, 54)},
                                 {"7/23/2005 11:59 pm", at(23, 59)},
                                 {"7/23/2005 13:00 pm", at(13, 0)},
                                 {"7/23/2005 0:30 am", at(0, 30)},
                                 {"7/23/2005 0:30 pm", at(12, 30)},
                                 {"7/23/2005 12:30 p", at(12, 30)},
                                 {"7/23/2005 7:54 p", at(7, 54)},
                                 // Anywhere in the text; afternoon is asked for first.
                                 {"7/23/2005 7:54 spamming", at(7, 54)},
                                 {"7/23/2005 7:54 shipment", at(19, 54)},
                                 {"7/23/2005 12:30 ampm", at(0, 30)},
                                 {"7/23/2005 7:54 ampm", at(19, 54)},
                                 {"7/23/2005 12:30 amp.m", at(0, 30)},
                                 {"7/23/2005 pm", at(12, 0)},
                             });
}

TEST(FreeDate, TwoDigitYears) {
    const std::pair<const char*, int> rows[] = {{"0", 2000},  {"00", 2000}, {"05", 2005}, {"37", 2037},
                                                {"70", 1970}, {"71", 1971}, {"99", 1999}, {"", 2000}};
    for (const auto& [year, expected] : rows)
        EXPECT_EQ(parseFreeDate(std::string("6/15/") + year), (Fields{expected, 6, 15}.value())) << year;
    EXPECT_EQ(parseFreeDate("6/15/69"), none) << "2069";
    EXPECT_EQ(parseFreeDate("6/15/39"), none) << "2039";
    EXPECT_EQ(parseFreeDate("1/5/38 12:00"), (Fields{2038, 1, 5, 12}.value()));
}

TEST(FreeDate, YearsAreThoseOfTheRange) {
    expectAll(parseFreeDate, {
                                 {"1/1/100", none},
                                 {"1/1/1969", none},
                                 {"1/5/1970", Fields{1970, 1, 5}.value()},
                                 {"12/31/2037", Fields{2037, 12, 31}.value()},
                                 {"1/1/2038", Fields{2038, 1, 1}.value()},
                                 {"2/1/2038", none}, // beyond 32 bits
                                 {"1/1/2039", none},
                                 {"1/1/99999999999999999999", none},
                             });
    EXPECT_NE(parseFreeDate("1/1/2038"), none);
}

TEST(FreeDate, NothingIsNoDate) {
    expectAll(parseFreeDate, {{"", none}, {" \r\n\t\f", none}, {"/", none}});
}

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

// The time of day

TEST(TimeOfDay, IsSecondsAfterMidnight) {
    const std::pair<const char*, int> rows[] = {
        {"9:05 pm", 75900},
        {"12 am", 0},
        {"0930", 34200},
        {"1730", 63000},
        {"17:30:00", 63000},
        {"17:30:05", 63005},
        {"17.30", 63000},
        {"at 17h30", 63000},
        {"12 pm", 43200},
        {"12", 43200},
        {"12:30 AM", 1800},
        {"12:30 a.m.", 1800},
        {"9 P", 75600},
        {"9pm", 75600},
        {"9:05:07pm", 75907},
        {"0", 0},
        {"0:00 pm", 43200},
        {"13 pm", 46800},
        {"13 am", 46800},
        {"", 0},
        {"pm", 43200},
        {"x pm", 0},
        {"noon", 0},
        // Scanning stops behind the third number; letters before the last number do not count.
        {"1 2 3 4 5", 3723},
        {"9 p 5", 32700},
        {"9 p 5 p", 75900},
        {"9:05 -- pm", 75900},
        {"9:05 xpm", 32700},
        {"-9:-05", 32700},
        // Without a separator.
        {"24", 86400},
        {"24:00", 86400},
        {"25", 1500},
        {"100", 3600},
        {"730 pm", 70200},
        {"1200 am", 0},
        {"1230 am", 1800},
        {"1230:45", 45045},
        {"1730:15:20", 63015}, // the second is the minute as it was
        {"235959", 2359 * 3600 + 59 * 60},
        // Nothing is checked for range.
        {"23:99", 88740},
        {"25:99", 1599},
        {"0:0:100", 100},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(parseTimeOfDay(text).seconds(), expected) << '"' << text << '"';
}

TEST(TimeOfDay, EveryMinuteInEveryForm) {
    for (int minute = 0; minute < 1440; ++minute) {
        const int hour = minute / 60;
        char text[32] = {};
        for (const char* pattern : {"%d:%02d", "%02d:%02d", "%02d.%02d:00", " %02d - %02d "}) {
            snprintf(text, sizeof(text), pattern, hour, minute % 60);
            ASSERT_EQ(parseTimeOfDay(text).seconds(), minute * 60) << text;
        }
        for (const char* pattern : {"%d:%02d %s", "%02d%02d %s"}) {
            // 12:05 am is not 1205 am alone: below 1:00 the compact form needs its 12.
            snprintf(text, sizeof(text), pattern, hour % 12 == 0 ? 12 : hour % 12, minute % 60,
                     hour < 12 ? "am" : "pm");
            ASSERT_EQ(parseTimeOfDay(text).seconds(), minute * 60) << text;
        }
        if (hour > 0) {
            snprintf(text, sizeof(text), "%02d%02d", hour, minute % 60);
            ASSERT_EQ(parseTimeOfDay(text).seconds(), minute * 60) << text;
        }
    }
}

TEST(TimeOfDay, NumbersBeyondTheRangeAreTheLargest) {
    EXPECT_EQ(parseTimeOfDay("0:0:99999999999999999999").seconds(), std::numeric_limits<std::int32_t>::max());
    parseTimeOfDay("99999999999999999999:99999999999999999999:99999999999999999999");
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
