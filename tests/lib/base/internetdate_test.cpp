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

} // namespace
} // namespace base
