#include "lib/base/locale.h"
#include "tests/support/instants.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace base {
namespace {

constexpr std::int32_t day = 86400;

/// Ends of days, months and years, both ends of the range, and a sweep across each change of the clock.
std::vector<std::int32_t> instants() {
    std::vector<std::int32_t> result = {1, day, 68'169'600, 0x7FFFFFFE, 0x7FFFFFFF};
    for (const std::int32_t end : test::calendarEnds())
        for (const std::int32_t t : {end, end + 1})
            result.push_back(t);
    for (const std::int32_t change : test::clockChanges())
        for (std::int32_t t = change - 7200; t <= change + 7200; t += 299)
            result.push_back(t);
    for (std::int32_t t = 1'767'225'600; t < 1'767'225'600 + 366 * day; t += 5 * day + 7 * 3600 + 1234)
        result.push_back(t);
    return result;
}

SYSTEMTIME systemTimeOf(const std::tm& fields) {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(fields.tm_year + 1900);
    time.wMonth = static_cast<WORD>(fields.tm_mon + 1);
    time.wDayOfWeek = static_cast<WORD>(fields.tm_wday);
    time.wDay = static_cast<WORD>(fields.tm_mday);
    time.wHour = static_cast<WORD>(fields.tm_hour);
    time.wMinute = static_cast<WORD>(fields.tm_min);
    time.wSecond = static_cast<WORD>(fields.tm_sec);
    return time;
}

std::string platformDate(const SYSTEMTIME& time, DWORD flags) {
    std::array<char, 500> text{};
    GetDateFormatA(LOCALE_USER_DEFAULT, flags, &time, nullptr, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::string platformTime(const SYSTEMTIME& time, DWORD flags) {
    std::array<char, 500> text{};
    GetTimeFormatA(LOCALE_USER_DEFAULT, flags, &time, nullptr, text.data(), static_cast<int>(text.size()));
    return text.data();
}

/// One of the user's own formats, put back afterwards.
class UserFormat {
public:
    UserFormat(LCTYPE type, const std::string& format) : type_(type) {
        GetLocaleInfoA(LOCALE_USER_DEFAULT, type_, old_.data(), static_cast<int>(old_.size()));
        EXPECT_TRUE(SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, format.c_str()));
    }
    ~UserFormat() { SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, old_.data()); }
    UserFormat(const UserFormat&) = delete;
    UserFormat& operator=(const UserFormat&) = delete;

private:
    LCTYPE type_;
    std::array<char, 200> old_{};
};

TEST(LowerCase, LowersAscii) {
    EXPECT_EQ(lowerCase('A'), 'a');
    EXPECT_EQ(lowerCase('Z'), 'z');
    EXPECT_EQ(lowerCase('a'), 'a');
    EXPECT_EQ(lowerCase('@'), '@');
    EXPECT_EQ(lowerCase('['), '[');
    EXPECT_EQ(lowerCase('\0'), '\0');
}

TEST(LowerCase, AgreesWithThePlatformForEveryCharacter) {
    int changed = 0;
    for (int code = 1; code < 256; ++code) {
        char text[2] = {static_cast<char>(code), '\0'};
        CharLowerA(text);
        EXPECT_EQ(lowerCase(static_cast<char>(code)), text[0]) << code;
        changed += text[0] != static_cast<char>(code);
    }
    EXPECT_GT(changed, 26) << "the code page has letters beyond ASCII";
}

TEST(ToSystemTime, HasTheLocalFields) {
    for (const std::int32_t t : instants()) {
        const SYSTEMTIME expected = systemTimeOf(test::localFields(t));
        SYSTEMTIME time;
        std::memset(&time, 0xAA, sizeof time);
        toSystemTime(TimeValue(t), time);
        EXPECT_EQ(std::memcmp(&time, &expected, sizeof time), 0) << t;
    }
}

TEST(ToSystemTime, IsAllZeroForANegativeTime) {
    for (const std::int32_t t : {-1, -day, static_cast<std::int32_t>(0x80000000)}) {
        SYSTEMTIME time;
        std::memset(&time, 0xAA, sizeof time);
        toSystemTime(TimeValue(t), time);
        const SYSTEMTIME zero{};
        EXPECT_EQ(std::memcmp(&time, &zero, sizeof time), 0) << t;
    }
}

TEST(ToSystemTime, TakesTimeZeroForWhatItIs) {
    SYSTEMTIME time;
    toSystemTime(TimeValue(), time);
    EXPECT_EQ(time.wYear, test::localFields(0).tm_year + 1900);
}

TEST(FormatLocaleDate, IsThePlatformsText) {
    for (const std::int32_t t : instants()) {
        const SYSTEMTIME time = systemTimeOf(test::localFields(t));
        EXPECT_EQ(formatLocaleDate(TimeValue(t), true), platformDate(time, DATE_LONGDATE)) << t;
        EXPECT_EQ(formatLocaleDate(TimeValue(t), false), platformDate(time, DATE_SHORTDATE)) << t;
        EXPECT_NE(formatLocaleDate(TimeValue(t), false), "") << t;
    }
    const TimeValue t(1'767'225'600);
    EXPECT_NE(formatLocaleDate(t, true), formatLocaleDate(t, false));
}

TEST(FormatLocaleDate, IsEmptyForTimeZeroAndForANegativeOne) {
    for (const bool longForm : {true, false}) {
        EXPECT_EQ(formatLocaleDate(TimeValue(), longForm), "");
        EXPECT_EQ(formatLocaleDate(TimeValue(-1), longForm), "");
    }
}

TEST(FormatLocaleDate, FollowsTheUsersFormats) {
    const UserFormat shortDate(LOCALE_SSHORTDATE, "'s' yyyy~MM~dd");
    const UserFormat longDate(LOCALE_SLONGDATE, "'l' dd yyyy");
    const TimeValue t = TimeValue::fromLocal(2005, 7, 23, 12, 0, 0, -1);
    EXPECT_EQ(formatLocaleDate(t, false), "s 2005~07~23");
    EXPECT_EQ(formatLocaleDate(t, true), "l 23 2005");
}

TEST(FormatLocaleDate, HasAtMost127Characters) {
    const TimeValue wednesday = TimeValue::fromLocal(2005, 7, 27, 12, 0, 0, -1);
    std::string weekdays; // "Wednesday" has nine characters
    for (int i = 0; i < 14; ++i)
        weekdays += "dddd.";
    {
        const UserFormat fits(LOCALE_SLONGDATE, weekdays.substr(0, 60) + "'xxxxxxx'");
        EXPECT_EQ(formatLocaleDate(wednesday, true).size(), 127U);
    }
    const UserFormat tooLong(LOCALE_SLONGDATE, weekdays.substr(0, 60) + "'xxxxxxxx'");
    EXPECT_EQ(formatLocaleDate(wednesday, true), "");
}

TEST(FormatLocaleTime, IsThePlatformsText) {
    for (const std::int32_t t : instants()) {
        const SYSTEMTIME time = systemTimeOf(test::localFields(t));
        const TimeValue value(t);
        EXPECT_EQ(formatLocaleTime(value, false, false), platformTime(time, 0)) << t;
        EXPECT_EQ(formatLocaleTime(value, true, false), platformTime(time, TIME_FORCE24HOURFORMAT)) << t;
        EXPECT_EQ(formatLocaleTime(value, false, true), platformTime(time, TIME_NOSECONDS)) << t;
        EXPECT_EQ(formatLocaleTime(value, true, true),
                  platformTime(time, TIME_FORCE24HOURFORMAT | TIME_NOSECONDS))
            << t;
        EXPECT_NE(formatLocaleTime(value, false, true), "") << t;
    }
}

TEST(FormatLocaleTime, IsEmptyForTimeZero) {
    for (const bool force24Hour : {true, false})
        for (const bool noSeconds : {true, false})
            EXPECT_EQ(formatLocaleTime(TimeValue(), force24Hour, noSeconds), "");
}

TEST(FormatLocaleTime, IsMidnightForANegativeTime) {
    EXPECT_EQ(formatLocaleTime(TimeValue(-1), false, true), "12:00 AM");
    EXPECT_EQ(formatLocaleTime(TimeValue(-86'400), false, true), "12:00 AM");
}

TEST(FormatLocaleTime, FollowsTheUsersFormatAndItsFlags) {
    const UserFormat format(LOCALE_STIMEFORMAT, "hh.mm.ss tt");
    const TimeValue t = TimeValue::fromLocal(2005, 7, 23, 21, 5, 9, -1);
    EXPECT_THAT(formatLocaleTime(t, false, false), testing::StartsWith("09.05.09"));
    EXPECT_THAT(formatLocaleTime(t, false, true), testing::StartsWith("09.05"));
    EXPECT_THAT(formatLocaleTime(t, false, true), testing::Not(testing::HasSubstr("09.05.09")));
    EXPECT_THAT(formatLocaleTime(t, true, false), testing::StartsWith("21.05.09"));
}

TEST(FormatLocaleTime, HasAtMost127Characters) {
    const TimeValue t = TimeValue::fromLocal(2005, 7, 23, 21, 5, 9, -1);
    const UserFormat marker(LOCALE_S2359, "afternoon"); // nine characters
    std::string markers;
    for (int i = 0; i < 14; ++i)
        markers += "tt.";
    {
        const UserFormat fits(LOCALE_STIMEFORMAT, markers.substr(0, 36) + "'xxxxxxx'");
        EXPECT_EQ(formatLocaleTime(t, false, false).size(), 127U);
    }
    const UserFormat tooLong(LOCALE_STIMEFORMAT, markers.substr(0, 36) + "'xxxxxxxx'");
    EXPECT_EQ(formatLocaleTime(t, false, false), "");
}

} // namespace
} // namespace base
