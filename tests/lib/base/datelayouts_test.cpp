#include "lib/base/dateparsing.h"
#include "tests/lib/base/seconds.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace base {
namespace {

using test::localSeconds;
using test::utcSeconds;

const char* const shortNames[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                  "jul", "aug", "sep", "oct", "nov", "dec"};
const char* const longNames[] = {"January", "February", "March",     "April",   "May",      "June",
                                 "July",    "August",   "September", "October", "November", "December"};

std::string upper(std::string text) {
    for (char& character : text)
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return text;
}

struct Row {
    std::string text;
    std::int32_t expected;
};

void expectAll(TimeValue (*parse)(std::string_view), std::initializer_list<Row> rows) {
    for (const Row& row : rows)
        EXPECT_EQ(parse(row.text).seconds(), row.expected) << '"' << row.text << '"';
}

// The internet layout

TEST(DateLayouts, InternetDateInGmtIsTheSameInstantInEveryZone) {
    expectAll(parseInternetDate, {{"Sun, 06 Nov 1994 08:49:37 GMT", 784'111'777},
                                  {"Sunday, 06-Nov-94 08:49:37 GMT", 784'111'777},
                                  {"Sun, 06 Nov 1994 08:49:37 UTC", 784'111'777},
                                  {"sun, 6 november 1994 8:49:37 utc", 784'111'777},
                                  {" \r\n\t\fSun, 06 Nov 1994 08:49:37 GMT \r\n\t\f", 784'111'777},
                                  {"Sun, 06 Nov 1994 08:49:37GmT", 784'111'777},
                                  {"Sat, 23 Jul 2005 19:54:28 GMT", 1'122'148'468},
                                  {"Mon, 18 Jan 2038 00:00:00 GMT", 2'147'385'600}});
}

TEST(DateLayouts, InternetDateNotEndingInGmtIsLocalStandardTimeEvenInSummer) {
    EXPECT_EQ(parseInternetDate("Sun, 23 Jan 2005 19:54:28").seconds(),
              localSeconds(2005, 1, 23, 19, 54, 28, 0));
    for (const char* end : {"", " EST", " x", " +0200", " -0500", " +0200 (CEST)", " (GMT)"})
        EXPECT_EQ(parseInternetDate(std::string("GMT, 23 Jul 2005 19:54:28") + end).seconds(),
                  localSeconds(2005, 7, 23, 19, 54, 28, 0))
            << end;
}

TEST(DateLayouts, InternetDateNeedsADayFrom1To31AndAMonthName) {
    expectAll(parseInternetDate, {{"Sun, 1 Nov 1994 00:00:00 GMT", 783'648'000},
                                  {"Sun, 31 Oct 1994 00:00:00 GMT", 783'561'600},
                                  {"Sun, 06 Nov", localSeconds(2000, 11, 6, 0, 0, 0, 0)}});
    for (const char* text :
         {"Sun, 0 Nov 1994 08:49:37 GMT", "Sun, 32 Oct 1994 00:00:00 GMT", "Sun, -6 Nov 1994 08:49:37 GMT",
          "Sun, x Nov 1994 08:49:37 GMT", "Sun, 06 Nev 1994 08:49:37 GMT", "Sun, 06 no 1994 08:49:37 GMT",
          "Sun, 06", "Sun", ""})
        EXPECT_EQ(parseInternetDate(text), TimeValue()) << text;
}

TEST(DateLayouts, InternetDateIsCutAtRunsOfItsSeparators) {
    for (const std::string one : {" ", ",", ", ", ",,  "})
        for (const std::string two : {" ", "-", " - ", "--"})
            for (const std::string three : {":", " ", "-", " : "})
                EXPECT_EQ(parseInternetDate("Sun" + one + "06" + two + "Nov" + two + "1994 08" + three +
                                            "49" + three + "37 GMT")
                              .seconds(),
                          // After a comma alone the time's pieces are one further on.
                          one == "," ? 784'258'620 : 784'111'777)
                    << '"' << one << two << three << '"';
}

// The layout of asctime

TEST(DateLayouts, AsctimeDateIsLocalTime) {
    const std::int32_t july = localSeconds(2005, 7, 23, 19, 54, 28);
    expectAll(parseAsctimeDate, {{"Sun Nov 6 08:49:37 1994", localSeconds(1994, 11, 6, 8, 49, 37)},
                                 {"Sat Jul 23 19:54:28 2005", july},
                                 {"sat july 23 19:54:28 05", july},
                                 {"\tSat JUL 23 19:54:28 2005\r\n", july},
                                 {"Sat Jul 23 19 54:28   2005", july}});
}

TEST(DateLayouts, AsctimeDateNeedsADayAfterASingleBlankAndAMonthName) {
    for (const char* text : {"Sun Nov  6 08:49:37 1994", "Sun Nov 0 08:49:37 1994", "Sun Nov x 08:49:37 1994",
                             "Sun 11 6 08:49:37 1994", "Sun,Nov,6,08:49:37,1994", "Sun Nov", "Sun", ""})
        EXPECT_EQ(parseAsctimeDate(text), TimeValue()) << text;
}

TEST(DateLayouts, AsctimeDateDoesNotLimitTheDay) {
    expectAll(parseAsctimeDate, {{"Sun Nov 40 08:49:37 1994", localSeconds(1994, 12, 10, 8, 49, 37)},
                                 {"Sun Nov -1 08:49:37 1994", localSeconds(1994, 10, 30, 8, 49, 37)}});
}

// Both

TEST(DateLayouts, HeaderMonthIsAnyWordThatBeginsWithAName) {
    for (int i = 0; i < 12; ++i)
        for (const std::string& name : {std::string(shortNames[i]), std::string(longNames[i]),
                                        upper(longNames[i]), shortNames[i] + std::string("x9")}) {
            const std::int32_t noon = utcSeconds(2005, static_cast<unsigned>(i) + 1, 15) + 43'200;
            expectAll(parseInternetDate, {{"Mon, 15 " + name + " 2005 12:00:00 GMT", noon},
                                          {"Mon, 15-" + name + "-05 12:00:00 GMT", noon}});
            EXPECT_EQ(parseAsctimeDate("Mon " + name + " 15 12:02:03 2005").seconds(),
                      localSeconds(2005, i + 1, 15, 12, 2, 3))
                << name;
        }
}

TEST(DateLayouts, HeaderYearsBelow100AreWidened) {
    const struct {
        const char* text;
        int year;
    } rows[] = {{"69", 2069},   {"70", 1970},   {"94", 1994},  {"99", 1999}, {"00", 2000},
                {"0", 2000},    {"05", 2005},   {"37", 2037},  {"+5", 2005}, {"100", 100},
                {"1999", 1999}, {"2038", 2038}, {"2039", 2039}};
    for (const auto& [text, year] : rows)
        EXPECT_EQ(parseInternetDate(std::string("Mon, 05 Jan ") + text + " 12:00:00").seconds(),
                  localSeconds(year, 1, 5, 12, 0, 0, 0))
            << text;
    const auto asctimeYear = [](const std::string& text) {
        return parseAsctimeDate("Mon Jan 5 12:00:00 " + text).seconds();
    };
    for (const auto& [text, year] : rows)
        EXPECT_EQ(asctimeYear(text), localSeconds(year, 1, 5, 12)) << text;
    EXPECT_EQ(asctimeYear(""), localSeconds(2000, 1, 5, 12));
    EXPECT_EQ(asctimeYear("-5"), localSeconds(1995, 1, 5, 12));
    EXPECT_EQ(asctimeYear("-30"), localSeconds(1970, 1, 5, 12));
    EXPECT_EQ(asctimeYear("-31"), localSeconds(1969, 1, 5, 12));
}

// The tolerant layout

TEST(DateLayouts, FreeDateHasTheMonthFirstUnlessItCannotBeOne) {
    expectAll(parseFreeDate, {{"13/1/2005", localSeconds(2005, 1, 13)},
                              {"1/13/2005", localSeconds(2005, 1, 13)},
                              {"12/12/2005", localSeconds(2005, 12, 12)},
                              {"12/11/2005", localSeconds(2005, 12, 11)},
                              {"11/12/2005", localSeconds(2005, 11, 12)},
                              {"13/12/2005", localSeconds(2005, 12, 13)},
                              {"13/13/2005", 0},
                              {"31/12/2005", localSeconds(2005, 12, 31)},
                              {"32/12/2005", 0},
                              {"12/31/2005", localSeconds(2005, 12, 31)},
                              {"12/32/2005", 0},
                              {"2/30/2005", localSeconds(2005, 3, 2)},
                              {"23.7.05", localSeconds(2005, 7, 23)}});
}

TEST(DateLayouts, FreeDateTakesNamedMonths) {
    const std::int32_t july = localSeconds(2005, 7, 23);
    expectAll(parseFreeDate, {{"jan 5 05", localSeconds(2005, 1, 5)},
                              {"jul 23 2005", july},
                              {"Jul  3 2005 19:54:31", localSeconds(2005, 7, 3, 19, 54, 31)},
                              {"23 jul 2005", july},
                              {"23-JUL-05", july},
                              {"23 jul. 2005", july}});
    for (int i = 0; i < 12; ++i) {
        const std::int32_t expected = localSeconds(2005, i + 1, 15, 12, 2, 3);
        const std::string shortName = shortNames[i], longName = longNames[i];
        for (const std::string& date : {shortName + " 15", upper(shortName) + " 15", longName + " 15",
                                        upper(longName) + " 15", "15 " + shortName, "15 " + upper(shortName)})
            EXPECT_EQ(parseFreeDate(date + " 2005 12:02:03").seconds(), expected) << date;
    }
}

TEST(DateLayouts, FreeDateTakesOnlyThreeLettersOfAMonthAfterItsDay) {
    for (const std::string name : longNames)
        EXPECT_EQ(parseFreeDate("15 " + name + " 2005 12:02:03") == TimeValue(), name != "May") << name;
    // In the last rows the month is the number and the day the word's, 0.
    expectAll(parseFreeDate, {{"23 ju 2005", 0},
                              {"13 jan 2005", localSeconds(2005, 1, 13)},
                              {"5 january 2005", localSeconds(2005, 4, 30)},
                              {"5 jan 2005", localSeconds(2005, 4, 30)},
                              {"12 jan 2005", localSeconds(2005, 11, 30)}});
}

TEST(DateLayouts, FreeDateReadsAnUnknownWordAsMonth13AndSwapsIt) {
    expectAll(parseFreeDate, {{"xyz 5 2005", localSeconds(2005, 5, 13)},
                              {"xyz 13 2005", 0},
                              {"/5/2005", localSeconds(2005, 5, 13)},
                              {"xyz jul 2005", localSeconds(2005, 7, 13)},
                              {"xyz", 0},
                              {"0/5/2005", localSeconds(2005, 5, 13)}});
}

TEST(DateLayouts, FreeDateTakesDay0AsTheLastOfTheMonthBefore) {
    expectAll(parseFreeDate, {{"3/0/2005", localSeconds(2005, 2, 28)},
                              {"3/0/2004", localSeconds(2004, 2, 29)},
                              {"1/0/2005", localSeconds(2004, 12, 31)},
                              {"3", localSeconds(2000, 2, 29)}});
}

TEST(DateLayouts, FreeDateIsCutAtRunsOfItsSeparators) {
    const std::int32_t expected = localSeconds(2005, 7, 23, 19, 54, 28);
    for (const std::string separator : {" ", "/", "-", "#", ".", "\\", ":", "  ", " / ", "-#.\\: /"}) {
        std::string text = "7";
        for (const char* number : {"23", "2005", "19", "54", "28"})
            text += separator + number;
        expectAll(parseFreeDate, {{text, expected}, {text + separator, expected}});
    }
    for (const char other : {',', ';', '\t', '_', '+', '|', '"', ']', '['})
        EXPECT_EQ(parseFreeDate(std::string("7") + other + "23" + other + "2005").seconds(),
                  localSeconds(2000, 6, 30))
            << other;
}

TEST(DateLayouts, FreeDateFollowsTheHalfOfTheDay) {
    const struct {
        const char* clock;
        int hour, minute;
    } rows[] = {
        {"12:30 am", 0, 30},       {"12:30 pm", 12, 30},  {"12:30 a.m.", 0, 30}, {"12:30 p.m.", 12, 30},
        {"12:30 AM", 0, 30},       {"7:54 P.M", 19, 54},  {"7:54 am", 7, 54},    {"7:54pm", 19, 54},
        {"11:59 pm", 23, 59},      {"13:00 pm", 13, 0},   {"0:30 am", 0, 30},    {"0:30 pm", 12, 30},
        {"12:30 p", 12, 30},       {"7:54 p", 7, 54},     {"pm", 12, 0},         {"7:54 spamming", 7, 54},
        {"7:54 shipment", 19, 54}, {"12:30 ampm", 0, 30}, {"7:54 ampm", 19, 54}, {"12:30 amp.m", 0, 30}};
    for (const auto& [clock, hour, minute] : rows)
        EXPECT_EQ(parseFreeDate(std::string("7/23/2005 ") + clock).seconds(),
                  localSeconds(2005, 7, 23, hour, minute))
            << clock;
}

TEST(DateLayouts, FreeDateHasAYearFrom1970To2038) {
    expectAll(parseFreeDate, {{"6/15/0", localSeconds(2000, 6, 15)},
                              {"6/15/05", localSeconds(2005, 6, 15)},
                              {"6/15/37", localSeconds(2037, 6, 15)},
                              {"6/15/70", localSeconds(1970, 6, 15)},
                              {"6/15/99", localSeconds(1999, 6, 15)},
                              {"6/15/", localSeconds(2000, 6, 15)},
                              {"6/15/69", 0},
                              {"6/15/39", 0},
                              {"1/5/38 12:00", localSeconds(2038, 1, 5, 12)},
                              {"1/1/100", 0},
                              {"1/1/1969", 0},
                              {"1/5/1970", localSeconds(1970, 1, 5)},
                              {"12/31/2037", localSeconds(2037, 12, 31)},
                              {"2/1/2038", 0}, // beyond 32 bits
                              {"1/1/2039", 0},
                              {"1/1/99999999999999999999", 0}});
    EXPECT_EQ(parseFreeDate("1/1/2038").local(), (LocalTime{2038, 1, 1, 0, 0, 0, 5}));
}

TEST(DateLayouts, FreeDateOfNothingIsNone) {
    expectAll(parseFreeDate, {{"", 0}, {" \r\n\t\f", 0}, {"/", 0}});
}

} // namespace
} // namespace base
