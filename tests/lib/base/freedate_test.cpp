#include "tests/lib/base/dateparsingrows.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace base {
namespace {

using test::expectAll;
using test::Fields;
using test::longNames;
using test::none;
using test::shortNames;
using test::upper;

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

} // namespace
} // namespace base
