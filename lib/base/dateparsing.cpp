#include "lib/base/dateparsing.h"

#include "lib/base/regexp.h"
#include "lib/base/sourceregistration.h"
#include "lib/base/strings.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

constexpr std::string_view monthNames = "janfebmaraprmayjunjulaugsepoctnovdec";
constexpr std::size_t monthNameLength = 3;
constexpr int monthCount = 12;

/// The value for a word that is not a month. It is above 12, so parseFreeDate() treats it as a day.
constexpr int noMonth = monthCount + 1;

// Constant-initialised, because other sources can register before this file's dynamic initialisation.
constinit TimeValue latestBuild;

// Compiled on first use, because registering parses a date and can happen before this file is initialised.

const Expression& blankOrComma() {
    static const Expression expression(R"([, ]+)");
    return expression;
}

const Expression& blankCommaOrDash() {
    static const Expression expression(R"([,\- ]+)");
    return expression;
}

const Expression& blankColonOrDash() {
    static const Expression expression(R"([ :\-]+)");
    return expression;
}

const Expression& blankOrColon() {
    static const Expression expression(R"([ :]+)");
    return expression;
}

const Expression& anySeparator() {
    static const Expression expression(R"([ /\-#.\\:]+)");
    return expression;
}

int toNumber(const std::string& text) {
    // Clamped, because `long` has more than 32 bits in native builds.
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<int>(
        std::clamp<long>(std::strtol(text.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}

int numberAt(std::string_view text, std::size_t n, const Expression& separator) {
    return toNumber(piece(text, n, separator));
}

std::string_view monthName(int month) {
    return monthNames.substr(static_cast<std::size_t>(month - 1) * monthNameLength, monthNameLength);
}

/// The month that the word's first three letters name, or noMonth.
int monthByPrefix(std::string_view word) {
    for (int month = 1; month <= monthCount; ++month)
        if (startsWithNoCase(word, monthName(month)))
            return month;
    return noMonth;
}

/// The month with this three-letter name, or 0.
int monthByName(std::string_view word) {
    for (int month = 1; month <= monthCount; ++month)
        if (compareNoCase(word, monthName(month)) == 0)
            return month;
    return 0;
}

bool contains(std::string_view text, std::string_view word) {
    return findNoCase(text, word) != notFound;
}

/// 94 is 1994, 69 is 2069.
int fullHeaderYear(int year) {
    if (year >= 100)
        return year;
    return year + 1900 >= 1970 ? year + 1900 : year + 2000;
}

/// 70 is 1970, 69 is 2069.
int fullUserYear(int year) {
    if (year < 70)
        return year + 2000;
    return year < 100 ? year + 1900 : year;
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

} // namespace

TimeValue parseDateTime(std::string_view text) {
    if (const TimeValue time = parseInternetDate(text); time != TimeValue())
        return time;
    if (const TimeValue time = parseAsctimeDate(text); time != TimeValue())
        return time;
    return parseFreeDate(text);
}

TimeValue parseInternetDate(std::string_view text) {
    const std::string trimmed = trim(text, whitespace);
    const int day = numberAt(trimmed, 1, blankOrComma());
    if (day < 1 || day > 31)
        return {};
    const int month = monthByPrefix(piece(trimmed, 2, blankCommaOrDash()));
    if (month == noMonth)
        return {};
    const int year = fullHeaderYear(numberAt(trimmed, 3, blankCommaOrDash()));
    const int hour = numberAt(trimmed, 4, blankColonOrDash());
    const int minute = numberAt(trimmed, 5, blankColonOrDash());
    const int second = numberAt(trimmed, 6, blankColonOrDash());
    if (endsWithNoCase(trimmed, "gmt") || endsWithNoCase(trimmed, "utc"))
        return TimeValue::fromUtc(year, month, day, hour, minute, second);
    // Standard time even in summer, unlike the other layouts.
    return TimeValue::fromLocal(year, month, day, hour, minute, second, 0);
}

TimeValue parseAsctimeDate(std::string_view text) {
    const std::string trimmed = trim(text, whitespace);
    // asctime pads a one-digit day with an extra space. The empty piece between the spaces is day 0, which is
    // rejected. The day has no upper limit, so "23 jul 2005" matches this layout.
    const int day = toNumber(pieceAt(trimmed, 2, ' '));
    if (day == 0)
        return {};
    const int month = monthByPrefix(pieceAt(trimmed, 1, ' '));
    if (month == noMonth)
        return {};
    const int year = fullHeaderYear(numberAt(trimmed, 6, blankOrColon()));
    const int hour = numberAt(trimmed, 3, blankOrColon());
    const int minute = numberAt(trimmed, 4, blankOrColon());
    const int second = numberAt(trimmed, 5, blankOrColon());
    return TimeValue::fromLocal(year, month, day, hour, minute, second, -1);
}

TimeValue parseFreeDate(std::string_view text) {
    const std::string trimmed = trim(text, whitespace);
    const std::string first = piece(trimmed, 0, anySeparator());
    const std::string second = piece(trimmed, 1, anySeparator());
    int month = toNumber(first);
    if (month == 0)
        month = monthByPrefix(first);
    int day = toNumber(second);
    if (month > monthCount && day <= monthCount)
        std::swap(month, day);
    // A month's name in second place has been read as 0 and swapped with a day above 12. Only three-letter
    // names count: "23 july 2005" is rejected. Days up to 12 are not swapped: "5 jan 2005" is day 0 of May.
    if (month == 0)
        month = monthByName(second);
    const int year = fullUserYear(numberAt(trimmed, 2, anySeparator()));
    int hour = numberAt(trimmed, 3, anySeparator());
    const int minute = numberAt(trimmed, 4, anySeparator());
    const int seconds = numberAt(trimmed, 5, anySeparator());
    if (hour < 12 && (contains(trimmed, "pm") || contains(trimmed, "p.m")))
        hour += 12;
    else if (hour == 12 && (contains(trimmed, "am") || contains(trimmed, "a.m")))
        hour = 0;
    // Day 0 is allowed: it is the last day of the previous month.
    if (month < 1 || month > monthCount || day > 31 || year < 1970 || year > 2038)
        return {};
    return TimeValue::fromLocal(year, month, day, hour, minute, seconds, -1);
}

TimeSpan parseTimeOfDay(std::string_view text) {
    int numbers[3] = {};
    auto rest = text.begin(); // after the last number found
    for (int& number : numbers) {
        const auto begin = std::find_if(rest, text.end(), isDigit);
        if (begin == text.end())
            break;
        rest = std::find_if_not(begin, text.end(), isDigit);
        number = toNumber(std::string(begin, rest));
    }
    auto [hour, minute, second] = numbers;
    // A first number above 24 is hours and minutes together: 1730 is 17:30, 25 is 0:25.
    if (hour > 24) {
        second = minute;
        minute = hour % 100;
        hour /= 100;
    }
    const auto letter = std::find_if(rest, text.end(), isLetter);
    const char half = letter == text.end() ? '\0' : *letter;
    if (hour < 12 && (half == 'p' || half == 'P'))
        hour += 12;
    else if (hour == 12 && (half == 'a' || half == 'A'))
        hour = 0;
    const std::int32_t minutes = detail::wrappingAdd(detail::wrappingMultiply(hour, 60), minute);
    return TimeSpan::fromSeconds(detail::wrappingAdd(detail::wrappingMultiply(minutes, 60), second));
}

bool registerSourceFile(std::string_view, std::string_view buildDate) {
    latestBuild = std::max(latestBuild, parseDateTime(buildDate));
    return true;
}

TimeValue buildTime() {
    return latestBuild;
}

} // namespace base
