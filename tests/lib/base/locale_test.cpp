#include "lib/base/locale.h"
#include "tests/lib/base/seconds.h"
#include "tests/support/instants.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>

namespace base {
namespace {

constexpr std::int32_t day = 86400;

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

template<class Format>
std::string platformText(Format format, const SYSTEMTIME& time, DWORD flags) {
    std::array<char, 500> text{};
    format(LOCALE_USER_DEFAULT, flags, &time, nullptr, text.data(), static_cast<int>(text.size()));
    return text.data();
}

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

TEST(Locale, LowerCaseAgreesWithThePlatformForEveryCharacter) {
    int changed = 0;
    for (int code = 1; code < 256; ++code) {
        char text[2] = {static_cast<char>(code), '\0'};
        CharLowerA(text);
        EXPECT_EQ(lowerCase(static_cast<char>(code)), text[0]) << code;
        changed += text[0] != static_cast<char>(code);
    }
    EXPECT_GT(changed, 26) << "the code page must have letters beyond ASCII";
    EXPECT_EQ(lowerCase('\0'), '\0');
    EXPECT_EQ(lowerCase('Z'), 'z');
}

SYSTEMTIME converted(std::int32_t t) {
    SYSTEMTIME time;
    std::memset(&time, 0xAA, sizeof time);
    toSystemTime(TimeValue(t), time);
    return time;
}

TEST(Locale, DateAndTimeMatchThePlatformsTextForTheLocalFields) {
    for (const std::int32_t t : test::instants()) {
        const SYSTEMTIME time = systemTimeOf(test::localFields(t));
        const SYSTEMTIME actual = converted(t);
        EXPECT_EQ(std::memcmp(&actual, &time, sizeof time), 0) << t;
        const TimeValue value(t);
        const auto date = [&](DWORD flags) { return platformText(GetDateFormatA, time, flags); };
        const auto clock = [&](DWORD flags) { return platformText(GetTimeFormatA, time, flags); };
        EXPECT_EQ(formatLocaleDate(value, true), date(DATE_LONGDATE)) << t;
        EXPECT_EQ(formatLocaleDate(value, false), date(DATE_SHORTDATE)) << t;
        EXPECT_EQ(formatLocaleTime(value, false, false), clock(0)) << t;
        EXPECT_EQ(formatLocaleTime(value, true, false), clock(TIME_FORCE24HOURFORMAT)) << t;
        EXPECT_EQ(formatLocaleTime(value, false, true), clock(TIME_NOSECONDS)) << t;
        EXPECT_EQ(formatLocaleTime(value, true, true), clock(TIME_FORCE24HOURFORMAT | TIME_NOSECONDS)) << t;
    }
}

TEST(Locale, SystemTimeOfANegativeTimeIsAllZeros) {
    for (const std::int32_t t : {-1, -day, INT32_MIN}) {
        const SYSTEMTIME actual = converted(t);
        EXPECT_EQ(std::memcmp(&actual, std::array<char, sizeof actual>{}.data(), sizeof actual), 0) << t;
    }
}

TEST(Locale, EmptyTimeHasNoTextAndANegativeTimeIsMidnight) {
    for (const bool first : {true, false}) {
        EXPECT_EQ(formatLocaleDate(TimeValue(), first), "");
        EXPECT_EQ(formatLocaleDate(TimeValue(-1), first), "");
        for (const bool second : {true, false})
            EXPECT_EQ(formatLocaleTime(TimeValue(), first, second), "");
    }
    EXPECT_EQ(formatLocaleTime(TimeValue(-1), false, true), "12:00 AM");
    EXPECT_EQ(formatLocaleTime(TimeValue(-day), false, true), "12:00 AM");
}

const TimeValue wednesday(test::localSeconds(2005, 7, 27, 21, 5, 9));

TEST(Locale, DateAndTimeFollowTheUsersFormats) {
    const UserFormat shortDate(LOCALE_SSHORTDATE, "'s' yyyy~MM~dd");
    const UserFormat longDate(LOCALE_SLONGDATE, "'l' dd yyyy");
    const UserFormat time(LOCALE_STIMEFORMAT, "hh.mm.ss tt");
    EXPECT_EQ(formatLocaleDate(wednesday, false), "s 2005~07~27");
    EXPECT_EQ(formatLocaleDate(wednesday, true), "l 27 2005");
    EXPECT_EQ(formatLocaleTime(wednesday, false, false), "09.05.09 PM");
    EXPECT_EQ(formatLocaleTime(wednesday, false, true), "09.05 PM");
    EXPECT_THAT(formatLocaleTime(wednesday, true, false), testing::StartsWith("21.05.09"));
}

std::string repeated(const std::string& text) {
    std::string result;
    for (int i = 0; i < 12; ++i)
        result += text;
    return result;
}

// "Wednesday" and "afternoon" have nine characters each, or ten with the period.
TEST(Locale, DateAndTimeHaveAtMost127Characters) {
    const UserFormat marker(LOCALE_S2359, "afternoon");
    {
        const UserFormat date(LOCALE_SLONGDATE, repeated("dddd.") + "'xxxxxxx'");
        const UserFormat time(LOCALE_STIMEFORMAT, repeated("tt.") + "'xxxxxxx'");
        EXPECT_EQ(formatLocaleDate(wednesday, true).size(), 127U);
        EXPECT_EQ(formatLocaleTime(wednesday, false, false).size(), 127U);
    }
    const UserFormat date(LOCALE_SLONGDATE, repeated("dddd.") + "'xxxxxxxx'");
    const UserFormat time(LOCALE_STIMEFORMAT, repeated("tt.") + "'xxxxxxxx'");
    EXPECT_EQ(formatLocaleDate(wednesday, true), "");
    EXPECT_EQ(formatLocaleTime(wednesday, false, false), "");
}

} // namespace
} // namespace base
