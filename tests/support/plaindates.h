// Simple reference parsers for the three date layouts. They use the C runtime's calendar.
#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace plain {

using Pieces = std::vector<std::string>;

inline bool isOneOf(char character, std::string_view set) {
    return set.find(character) != std::string_view::npos;
}

inline std::string lowered(std::string_view text) {
    std::string result(text);
    for (char& character : result)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return result;
}

inline std::string prepared(std::string_view text) {
    while (!text.empty() && isOneOf(text.front(), " \r\n\t\f"))
        text.remove_prefix(1);
    while (!text.empty() && isOneOf(text.back(), " \r\n\t\f"))
        text.remove_suffix(1);
    return lowered(text);
}

inline std::string pieceOf(const std::string& text, std::size_t n, std::string_view separators,
                           bool runsCountOnce = true) {
    Pieces pieces(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isOneOf(text[i], separators))
            pieces.back() += text[i];
        else if (i == 0 || !runsCountOnce || !isOneOf(text[i - 1], separators))
            pieces.emplace_back();
    }
    return n < pieces.size() ? pieces[n] : std::string();
}

inline int numberOf(const std::string& text) {
    std::size_t at = 0;
    while (at < text.size() && isOneOf(text[at], " \t\n\v\f\r"))
        ++at;
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && isOneOf(text[at], "+-"))
        ++at;
    std::int64_t number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        number = number > 4'294'967'296 ? number : number * 10 + text[at] - '0';
    number = negative ? -number : number;
    return static_cast<int>(number > INT32_MAX ? INT32_MAX : number < INT32_MIN ? INT32_MIN : number);
}

inline int monthAtStartOf(const std::string& word) {
    const char* const names[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                 "jul", "aug", "sep", "oct", "nov", "dec"};
    for (int i = 0; i < 12; ++i)
        if (word.substr(0, 3) == names[i])
            return i + 1;
    return 0;
}

struct Fields {
    int year, month, day, hour, minute, second;
};

inline std::int32_t secondsOf(const Fields& fields, int isDst, bool utc) {
    std::tm tm{};
    tm.tm_year = static_cast<int>(static_cast<std::uint32_t>(fields.year) - 1900u);
    tm.tm_mon = fields.month - 1;
    tm.tm_mday = fields.day;
    tm.tm_hour = fields.hour;
    tm.tm_min = fields.minute;
    tm.tm_sec = fields.second;
    tm.tm_isdst = isDst;
#ifdef _WIN32
    const std::int64_t seconds = utc ? _mkgmtime64(&tm) : std::mktime(&tm);
#else
    const std::int64_t seconds = utc ? timegm(&tm) : std::mktime(&tm);
#endif
    const bool valid = seconds != -1 && seconds <= INT32_MAX && seconds >= (utc ? 0 : INT32_MIN);
    return valid ? static_cast<std::int32_t>(seconds) : 0;
}

inline int yearOfHeader(int year) {
    return year >= 100 ? year : year + 1900 < 1970 ? year + 2000 : year + 1900;
}

inline bool endsWith(const std::string& text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

inline std::int32_t internetDate(std::string_view given) {
    const std::string text = prepared(given);
    const auto number = [&](std::size_t n, std::string_view set) { return numberOf(pieceOf(text, n, set)); };
    const int day = number(1, ", ");
    const int month = monthAtStartOf(pieceOf(text, 2, ",- "));
    if (day < 1 || day > 31 || month == 0)
        return 0;
    const Fields fields{
        yearOfHeader(number(3, ",- ")), month, day, number(4, " :-"), number(5, " :-"), number(6, " :-")};
    return secondsOf(fields, 0, endsWith(text, "gmt") || endsWith(text, "utc"));
}

inline std::int32_t asctimeDate(std::string_view given) {
    const std::string text = prepared(given);
    const auto number = [&](std::size_t n) { return numberOf(pieceOf(text, n, " :")); };
    const int day = numberOf(pieceOf(text, 2, " ", false));
    const int month = monthAtStartOf(pieceOf(text, 1, " ", false));
    if (day == 0 || month == 0)
        return 0;
    return secondsOf({yearOfHeader(number(6)), month, day, number(3), number(4), number(5)}, -1, false);
}

inline std::int32_t freeDate(std::string_view given) {
    const std::string text = prepared(given);
    if (text.empty())
        return 0;
    const auto word = [&](std::size_t n) { return pieceOf(text, n, " /-#.\\:"); };
    int month = numberOf(word(0));
    int day = numberOf(word(1));
    if (month == 0)
        month = monthAtStartOf(word(0)) == 0 ? 13 : monthAtStartOf(word(0));
    if (month >= 13 && day <= 12) {
        const int first = month;
        month = day;
        day = first;
    }
    if (month == 0 && word(1).size() == 3)
        month = monthAtStartOf(word(1));
    int year = numberOf(word(2));
    int hour = numberOf(word(3));
    const auto holds = [&](const char* mark) { return text.find(mark) != std::string::npos; };
    if (hour < 12 && (holds("pm") || holds("p.m")))
        hour += 12;
    else if (hour == 12 && (holds("am") || holds("a.m")))
        hour = 0;
    if (year < 70)
        year += 2000;
    else if (year < 100)
        year += 1900;
    if (month < 1 || month > 12 || day > 31 || year < 1970 || year > 2038)
        return 0;
    return secondsOf({year, month, day, hour, numberOf(word(4)), numberOf(word(5))}, -1, false);
}

} // namespace plain
