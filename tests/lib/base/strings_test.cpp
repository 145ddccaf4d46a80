#include "lib/base/locale.h"
#include "lib/base/strings.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace base {
namespace {

TEST(Strings, TrimRemovesTheSetFromBothEnds) {
    const struct {
        const char *text, *set, *left, *right, *both;
    } rows[] = {
        {" \r\n\t\fa b \r\n\t\f", " \r\n\t\f", "a b \r\n\t\f", " \r\n\t\fa b", "a b"},
        {"", " ", "", "", ""},
        {" \r\n\t\f \t", " \r\n\t\f", "", "", ""},
        {"xyaxybyx", "xy", "axybyx", "xyaxyb", "axyb"},
        {" a ", "", " a ", " a ", " a "},
        {"\va\v", " \r\n\t\f", "\va\v", "\va\v", "\va\v"},
        {"\xFFx\xFF", "\xFF", "x\xFF", "\xFFx", "x"},
    };
    for (const auto& [text, set, left, right, both] : rows) {
        EXPECT_EQ(trim(text, set), both) << text;
        std::string inPlace = text;
        trimLeft(inPlace, set);
        EXPECT_EQ(inPlace, left);
        inPlace = text;
        trimRight(inPlace, set);
        EXPECT_EQ(inPlace, right);
    }
}

TEST(Strings, ToLowerFollowsTheCodePage) {
    std::string text = "C:\\AbC@[`{Z9.KRA";
    toLower(text);
    EXPECT_EQ(text, "c:\\abc@[`{z9.kra");
    std::string all, expected;
    for (int code = 0; code < 256; ++code) {
        all += static_cast<char>(code);
        expected += lowerCase(static_cast<char>(code));
    }
    toLower(all);
    EXPECT_EQ(all, expected);
}

TEST(Strings, ToIntegerReadsTheLeadingNumberAndWrapsAround) {
    const struct {
        const char* text;
        int base;
        std::int64_t expected;
    } rows[] = {{"  -42abc", 10, -42}, {"ff", 16, 255},   {"z", 36, 35},  {"- 5", 10, 0},
                {"", 10, 0},           {"-", 10, 0},      {"abc", 10, 0}, {"+7", 10, 7},
                {"+-7", 10, 0},        {"12 34", 10, 12}, {"0x10", 16, 0}};
    for (const auto& [text, base, expected] : rows)
        EXPECT_EQ(toInteger(text, base), expected) << '"' << text << "\" in base " << base;
    EXPECT_EQ(toInteger("9223372036854775807", 10), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(toInteger("9223372036854775808", 10), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(toInteger("-9223372036854775808", 10), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(toInteger("-18446744073709551617", 10), -1);
    EXPECT_EQ(toInteger("10000000000000000", 16), 0);
}

int digitIn36(int code) {
    if (code >= '0' && code <= '9')
        return code - '0';
    if (code >= 'a' && code <= 'z')
        return code - 'a' + 10;
    return code >= 'A' && code <= 'Z' ? code - 'A' + 10 : 99;
}

TEST(Strings, ToIntegerAcceptsTheDigitsOfTheBase) {
    for (int base = 2; base <= 36; ++base)
        for (int code = 0; code < 256; ++code) {
            const std::string text = std::string("1") + static_cast<char>(code) + "1";
            const int digit = digitIn36(code);
            ASSERT_EQ(toInteger(text, base), digit < base ? (base + digit) * base + 1 : 1)
                << "character " << code << " in base " << base;
        }
}

TEST(Strings, ToIntegerSkipsSpacesAndTheControlCharacters9To13) {
    for (int code = 0; code < 256; ++code) {
        if (digitIn36(code) < 10 || code == '+' || code == '-')
            continue;
        const bool skipped = code == ' ' || (code >= 9 && code <= 13);
        ASSERT_EQ(toInteger(static_cast<char>(code) + std::string("7"), 10), skipped ? 7 : 0) << code;
    }
}

TEST(Strings, FillOverwritesAndAppendsUpToTheCount) {
    const struct {
        const char* text;
        std::uint32_t count;
        const char* expected;
    } rows[] = {
        {"", 3, "xxx"}, {"ab", 4, "xxxx"}, {"ab", 2, "xx"}, {"abcdef", 2, "xxcdef"}, {"abc", 0, "abc"}};
    for (const auto& [before, count, expected] : rows) {
        std::string text = before;
        fill(text, count, 'x');
        EXPECT_EQ(text, expected) << before;
    }
}

TEST(Strings, PieceAtSplitsAtEachSeparator) {
    const struct {
        const char* text;
        std::uint32_t n;
        char separator;
        const char* expected;
    } rows[] = {{"Sun Nov 6", 0, ' ', "Sun"}, {"Sun Nov 6", 2, ' ', "6"}, {"Sun Nov 6", 3, ' ', ""},
                {"a", 1000, ' ', ""},         {"a b", 0, '|', "a b"},     {"", 0, ' ', ""},
                {"Nov  6", 1, ' ', ""},       {"Nov  6", 2, ' ', "6"},    {"/a/", 0, '/', ""},
                {"/a/", 1, '/', "a"},         {"/a/", 2, '/', ""},        {"a\xFF\xE4", 1, '\xFF', "\xE4"}};
    for (const auto& [text, n, separator, expected] : rows)
        EXPECT_EQ(pieceAt(text, n, separator), expected) << text << ' ' << n;
}

int sign(int number) {
    return (number > 0) - (number < 0);
}

TEST(Strings, CompareNoCaseIgnoresCaseAndSortsAPrefixFirst) {
    const struct {
        std::string a, b;
        int expected;
    } rows[] = {{"Spider.KRA", "sPIDER.kra", 0},
                {"abC1", "ABc2", -1},
                {"abc", "ABCD", -1},
                {"ABCD", "abc", 1},
                {"", "a", -1},
                {"b", "abc", 1},
                {std::string("x\0a", 3), std::string("X\0B", 3), -1}};
    for (const auto& [a, b, expected] : rows)
        EXPECT_EQ(sign(compareNoCase(a, b)), expected) << a << ' ' << b;
}

TEST(Strings, ComparesLoweredUnsignedBytes) {
    for (int a = 0; a < 256; ++a)
        for (int b = 0; b < 256; ++b) {
            const std::string x(1, static_cast<char>(a));
            const std::string y(1, static_cast<char>(b));
            const int order = std::tolower(a) - std::tolower(b);
            ASSERT_EQ(sign(compareNoCase(x, y)), sign(order)) << a << ' ' << b;
            ASSERT_EQ(startsWithNoCase(x + 'x', y), order == 0) << a << ' ' << b;
            ASSERT_EQ(endsWithNoCase('x' + x, y), order == 0) << a << ' ' << b;
            ASSERT_EQ(findNoCase(x, y), order == 0 ? 0 : notFound) << a << ' ' << b;
        }
}

TEST(Strings, StartsAndEndsAreComparedWithoutCase) {
    const struct {
        std::string text, part;
        bool starts, ends;
    } rows[] = {{"RUN:notepad", "run:", true, false},
                {"run:", "RUN:", true, true},
                {"run", "", true, true},
                {"", "", true, true},
                {"run", "run:", false, false},
                {"xrun:", "run:", false, true},
                {"mt", "gmt", false, false},
                {"gmt ", "gmt", true, false},
                {std::string("x\0a", 3), std::string("X\0B", 3), false, false}};
    for (const auto& [text, part, starts, ends] : rows) {
        EXPECT_EQ(startsWithNoCase(text, part), starts) << text << ' ' << part;
        EXPECT_EQ(endsWithNoCase(text, part), ends) << text << ' ' << part;
    }
}

TEST(Strings, FindNoCaseReturnsTheFirstPositionInTheGivenRange) {
    EXPECT_EQ(notFound, 0xFFFFFFFFU);
    EXPECT_EQ(findNoCase(std::string("X\0B", 3), "b"), 2U);
    const struct {
        const char *text, *what;
        std::uint32_t from, limit, expected;
    } rows[] = {{"9:05 pM", "Pm", 0, notFound, 5},        {"abcabc", "ABC", 0, notFound, 0},
                {"abcabc", "ABC", 1, notFound, 3},        {"abcabc", "abc", 3, notFound, 3},
                {"abcabc", "abc", 4, notFound, notFound}, {"aab", "ab", 0, notFound, 1},
                {"abcabc", "abc", 1, 3, notFound},        {"abcabc", "abc", 1, 4, 3},
                {"abc", "abc", 0, 0, notFound},           {"abc", "abc", 0, 1, 0},
                {"abc", "", 0, notFound, notFound},       {"", "", 0, notFound, notFound},
                {"ab", "abc", 0, notFound, notFound},     {"abc", "c", 2, notFound, 2},
                {"abc", "c", 3, notFound, notFound},      {"abc", "c", notFound, notFound, notFound},
                {"abcabc", "abc", 3, 2, notFound}};
    for (const auto& [text, what, from, limit, expected] : rows)
        EXPECT_EQ(findNoCase(text, what, from, limit), expected)
            << '"' << what << "\" in \"" << text << "\" from " << from << " below " << limit;
}

TEST(Strings, ComparisonWithoutCaseAllocatesNothing) {
    const std::string text(10'000, 'A');
    const std::string other = std::string(9'999, 'a') + 'b';
    const std::size_t before = test::allocationCount;
    const bool right = compareNoCase(text, other) < 0 && findNoCase(other, "aB") == 9'998U &&
                       !startsWithNoCase(text, other) && !endsWithNoCase(text, other);
    EXPECT_EQ(test::allocationCount, before);
    EXPECT_TRUE(right);
}

} // namespace
} // namespace base
