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

} // namespace
} // namespace base
