#include "lib/base/dateparsing.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <limits>

namespace base {
namespace {

TEST(TimeOfDay, IsInSecondsAfterMidnight) {
    const struct {
        const char* text;
        std::int32_t seconds;
    } rows[] = {{"9:05 pm", 75900},    {"12 am", 0},        {"17:30:05", 63005},  {"at 17h30", 63000},
                {"12 pm", 43200},      {"12", 43200},       {"12:30 a.m.", 1800}, {"9 P", 75600},
                {"9:05:07pm", 75907},  {"0:00 pm", 43200},  {"13 am", 46800},     {"", 0},
                {"pm", 43200},         {"x pm", 0},         {"1 2 3 4 5", 3723},  {"9 p 5", 32700},
                {"9:05 -- pm", 75900}, {"9:05 xpm", 32700}, {"-9:-05", 32700},    {"24:00", 86400},
                {"25", 1500},          {"730 pm", 70200},   {"1200 am", 0},       {"1730:15:20", 63015},
                {"235959", 8495940},   {"25:99", 1599}};
    for (const auto& [text, seconds] : rows)
        EXPECT_EQ(parseTimeOfDay(text).seconds(), seconds) << '"' << text << '"';
}

TEST(TimeOfDay, EveryMinuteIsParsedInEveryForm) {
    for (int minute = 0; minute < 1440; ++minute) {
        const int hour = minute / 60;
        char text[32] = {};
        for (const char* pattern : {"%d:%02d", "%02d:%02d", "%02d.%02d:00", " %02d - %02d "}) {
            snprintf(text, sizeof(text), pattern, hour, minute % 60);
            ASSERT_EQ(parseTimeOfDay(text).seconds(), minute * 60) << text;
        }
        for (const char* pattern : {"%d:%02d %s", "%02d%02d %s"}) {
            // Without a separator, the hour after midnight must be written as 12: "1205 am".
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

TEST(TimeOfDay, NumbersSaturateAndTheSumWrapsAround) {
    EXPECT_EQ(parseTimeOfDay("0:0:99999999999999999999").seconds(), std::numeric_limits<std::int32_t>::max());
    // The first number saturates at 2147483647, which is read as 21,474,836 hours and 47 minutes.
    EXPECT_EQ(parseTimeOfDay("99999999999999999999:99999999999999999999:99999999999999999999").seconds(),
              -2'147'472'000);
}

} // namespace
} // namespace base
