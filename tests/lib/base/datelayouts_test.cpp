#include "lib/base/dateparsing.h"
#include "tests/lib/base/seconds.h"
#include "tests/support/plaindates.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace base {
namespace {

using test::localSeconds;

struct Row {
    std::string text;
    std::int32_t expected;
};

void expectAll(TimeValue (*parse)(std::string_view), std::initializer_list<Row> rows) {
    for (const Row& row : rows)
        EXPECT_EQ(parse(row.text).seconds(), row.expected) << '"' << row.text << '"';
}

TEST(DateLayouts, InternetDateInGmtIsTheSameInstantInEveryZone) {
    expectAll(parseInternetDate, {{"Sun, 06 Nov 1994 08:49:37 GMT", 784'111'777},
                                  {"Sunday, 06-Nov-94 08:49:37 GMT", 784'111'777},
                                  {"sun, 6 november 1994 8:49:37 utc", 784'111'777},
                                  {" \r\n\t\fSun, 06 Nov 1994 08:49:37GmT \r\n\t\f", 784'111'777},
                                  {"Sat, 23 Jul 2005 19:54:28 GMT", 1'122'148'468},
                                  {"Mon, 18 Jan 2038 00:00:00 GMT", 2'147'385'600}});
}

TEST(DateLayouts, InternetDateWithoutGmtIsLocalStandardTimeEvenInSummer) {
    EXPECT_EQ(parseInternetDate("Sun, 23 Jan 2005 19:54:28").seconds(),
              localSeconds(2005, 1, 23, 19, 54, 28, 0));
    for (const char* end : {"", " EST", " +0200 (CEST)", " (GMT)"})
        EXPECT_EQ(parseInternetDate(std::string("GMT, 23 Jul 2005 19:54:28") + end).seconds(),
                  localSeconds(2005, 7, 23, 19, 54, 28, 0))
            << end;
}

TEST(DateLayouts, InternetDateNeedsADayFrom1To31AndAMonthName) {
    expectAll(parseInternetDate, {{"Sun, 1 Nov 1994 00:00:00 GMT", 783'648'000},
                                  {"Sun, 31 Oct 1994 00:00:00 GMT", 783'561'600},
                                  {"Sun, 06 Nov", localSeconds(2000, 11, 6, 0, 0, 0, 0)}});
    for (const char* text : {"Sun, 0 Nov 1994 08:49:37 GMT", "Sun, 32 Oct 1994 00:00:00 GMT",
                             "Sun, x Nov 1994 08:49:37 GMT", "Sun, 06 no 1994 08:49:37 GMT", "Sun", ""})
        EXPECT_EQ(parseInternetDate(text), TimeValue()) << text;
}

TEST(DateLayouts, AsctimeDateIsLocalTimeAndAcceptsAnyDayNumber) {
    const std::int32_t july = localSeconds(2005, 7, 23, 19, 54, 28);
    expectAll(parseAsctimeDate, {{"Sun Nov 6 08:49:37 1994", localSeconds(1994, 11, 6, 8, 49, 37)},
                                 {"\tSat JULY 23 19:54:28 05\r\n", july},
                                 {"Sat Jul 23 19 54:28   2005", july},
                                 {"Sun Nov 40 08:49:37 1994", localSeconds(1994, 12, 10, 8, 49, 37)},
                                 {"Sun Nov -1 08:49:37 1994", localSeconds(1994, 10, 30, 8, 49, 37)}});
}

TEST(DateLayouts, AsctimeDateNeedsAMonthNameAndADayAfterOneSpace) {
    for (const char* text : {"Sun Nov  6 08:49:37 1994", "Sun Nov 0 08:49:37 1994", "Sun Nov x 08:49:37 1994",
                             "Sun 11 6 08:49:37 1994", "Sun,Nov,6,08:49:37,1994", "Sun Nov", "Sun", ""})
        EXPECT_EQ(parseAsctimeDate(text), TimeValue()) << text;
}

TEST(DateLayouts, YearsBelow70Are20xxAndBelow100Are19xx) {
    const struct {
        const char* text;
        int year;
    } rows[] = {{"69", 2069}, {"70", 1970}, {"99", 1999}, {"0", 2000}, {"37", 2037}, {"100", 100}};
    for (const auto& [text, year] : rows) {
        EXPECT_EQ(parseInternetDate(std::string("Mon, 05 Jan ") + text + " 12:00:00").seconds(),
                  localSeconds(year, 1, 5, 12, 0, 0, 0))
            << text;
        EXPECT_EQ(parseAsctimeDate(std::string("Mon Jan 5 12:00:00 ") + text).seconds(),
                  localSeconds(year, 1, 5, 12))
            << text;
    }
}

TEST(DateLayouts, FreeDateSwapsDayAndMonthIfTheFirstNumberIsNoMonth) {
    expectAll(parseFreeDate, {{"13/1/2005", localSeconds(2005, 1, 13)},
                              {"1/13/2005", localSeconds(2005, 1, 13)},
                              {"12/11/2005", localSeconds(2005, 12, 11)},
                              {"13/13/2005", 0},
                              {"32/12/2005", 0},
                              {"2/30/2005", localSeconds(2005, 3, 2)},
                              {"3/0/2004", localSeconds(2004, 2, 29)},
                              {"23.7.05", localSeconds(2005, 7, 23)},
                              {"3", localSeconds(2000, 2, 29)}});
}

TEST(DateLayouts, FreeDateNeedsAThreeLetterMonthAfterTheDay) {
    const std::int32_t july = localSeconds(2005, 7, 23);
    // In the last two rows, the first number is read as the month and the word as day 0.
    expectAll(parseFreeDate, {{"july 23 2005", july},
                              {"Jul  3 2005 19:54:31", localSeconds(2005, 7, 3, 19, 54, 31)},
                              {"23-JUL-05", july},
                              {"23 jul. 2005", july},
                              {"23 july 2005", 0},
                              {"23 ju 2005", 0},
                              {"13 jan 2005", localSeconds(2005, 1, 13)},
                              {"5 january 2005", localSeconds(2005, 4, 30)},
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

TEST(DateLayouts, FreeDateAppliesAmAndPm) {
    const struct {
        const char* clock;
        int hour, minute;
    } rows[] = {{"12:30 am", 0, 30},       {"12:30 pm", 12, 30},  {"12:30 A.M.", 0, 30},
                {"7:54pm", 19, 54},        {"13:00 pm", 13, 0},   {"7:54 p", 7, 54},
                {"7:54 shipment", 19, 54}, {"12:30 ampm", 0, 30}, {"7:54 ampm", 19, 54}};
    for (const auto& [clock, hour, minute] : rows)
        EXPECT_EQ(parseFreeDate(std::string("7/23/2005 ") + clock).seconds(),
                  localSeconds(2005, 7, 23, hour, minute))
            << clock;
}

TEST(DateLayouts, FreeDateNeedsAYearFrom1970To2038) {
    expectAll(parseFreeDate, {{"6/15/05", localSeconds(2005, 6, 15)},
                              {"6/15/70", localSeconds(1970, 6, 15)},
                              {"6/15/", localSeconds(2000, 6, 15)},
                              {"6/15/69", 0},
                              {"1/5/38 12:00", localSeconds(2038, 1, 5, 12)},
                              {"1/1/100", 0},
                              {"2/1/2038", 0}, // exceeds 32 bits
                              {"1/1/2039", 0},
                              {"1/1/99999999999999999999", 0},
                              {" \r\n\t\f", 0}});
    EXPECT_EQ(parseFreeDate("1/1/2038").local(), (LocalTime{2038, 1, 1, 0, 0, 0, 5}));
}

class Writer {
public:
    explicit Writer(unsigned seed) : random_(seed) {}

    std::string text() {
        const auto number = [this] { return std::to_string(static_cast<int>(random_() % 66) - 3); };
        const std::string day = pick({"Sun", "Monday", "GMT", "", "5"});
        const std::string month = pick({"jan", "FEB", "March", "apr", "may", "june", "Jul", "aug.", "sept",
                                        "oct", "November", "decx", "nev", "ja", "7", "13"});
        const std::string year = pick({"0", "5", "05", "37", "38", "69", "70", "99", "100", "-30", "-31",
                                       "1970", "1994", "2005", "2024", "2038", "2039", "", "x"});
        const std::string clock =
            number() + pick({":", "-", " : ", "."}) + number() + pick({":", " "}) + number();
        const std::string end = pick({"", " GMT", "utc", " am", "p.m.", " PM", " spam", " (gmt)"});
        switch (random_() % 4) {
        case 0:
            return day + gap() + number() + gap() + month + gap() + year + gap() + clock + end;
        case 1:
            return day + gap() + month + gap() + number() + gap() + clock + gap() + year + end;
        case 2:
            return month + gap() + number() + gap() + year + gap() + clock + end;
        default:
            return number() + gap() + pick({month, number()}) + gap() + year + gap() + clock + end;
        }
    }

private:
    std::string pick(std::initializer_list<std::string> words) {
        return words.begin()[random_() % words.size()];
    }
    std::string gap() {
        return pick({" ", " ", " ", ", ", ",", "-", "/", "  ", "#", ".", "\\", ":", " / ", "_", "\t", "]"});
    }

    std::mt19937 random_;
};

TEST(DateLayouts, AgreeWithThePlainRules) {
    Writer writer(20260105);
    int dates = 0;
    for (int i = 0; i < 5000; ++i) {
        const std::string text = writer.text();
        EXPECT_EQ(parseInternetDate(text).seconds(), plain::internetDate(text)) << text;
        EXPECT_EQ(parseAsctimeDate(text).seconds(), plain::asctimeDate(text)) << text;
        EXPECT_EQ(parseFreeDate(text).seconds(), plain::freeDate(text)) << text;
        dates += parseDateTime(text) != TimeValue();
    }
    EXPECT_GT(dates, 1000);
}

} // namespace
} // namespace base
