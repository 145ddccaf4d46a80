#include "lib/base/locale.h"
#include "lib/base/strings.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace base {
namespace {

TEST(Whitespace, HasFiveCharacters) {
    EXPECT_EQ(whitespace, std::string_view(" \r\n\t\f"));
}

TEST(InvalidFileNameChars, HasNineCharacters) {
    EXPECT_EQ(invalidFileNameChars, R"(\/:*?"<>|)");
    EXPECT_EQ(invalidFileNameChars.size(), 9U);
}

TEST(Trim, TakesTheSetFromBothEnds) {
    EXPECT_EQ(trim(" \r\n\t\fa b \r\n\t\f", whitespace), "a b");
    EXPECT_EQ(trim("a b", whitespace), "a b");
    EXPECT_EQ(trim("", whitespace), "");
    EXPECT_EQ(trim("xyaxybyx", "xy"), "axyb");
    EXPECT_EQ(trim(" a ", ""), " a ");
}

TEST(Trim, LeavesTheVerticalTab) {
    EXPECT_EQ(trim("\va\v", whitespace), "\va\v");
}

TEST(Trim, TextOfWhitespaceOnlyIsEmpty) {
    EXPECT_EQ(trim(" \r\n\t\f \t", whitespace), "");
}

TEST(Trim, LeavesBytesAboveAscii) {
    EXPECT_EQ(trim(" \xA0\xE4\xFF ", whitespace), "\xA0\xE4\xFF");
    EXPECT_EQ(trim("\xFFx\xFF", "\xFF"), "x");
}

TEST(TrimRight, TakesTheSetFromTheEndInPlace) {
    std::string text = " a b \t";
    trimRight(text, whitespace);
    EXPECT_EQ(text, " a b");
    trimRight(text, "b");
    EXPECT_EQ(text, " a ");
    text = " \t";
    trimRight(text, whitespace);
    EXPECT_EQ(text, "");
    trimRight(text, whitespace);
    EXPECT_EQ(text, "");
}

TEST(TrimLeft, TakesTheSetFromTheStartInPlace) {
    std::string text = "\t a b ";
    trimLeft(text, whitespace);
    EXPECT_EQ(text, "a b ");
    trimLeft(text, "a");
    EXPECT_EQ(text, " b ");
    text = " \t";
    trimLeft(text, whitespace);
    EXPECT_EQ(text, "");
    trimLeft(text, whitespace);
    EXPECT_EQ(text, "");
}

TEST(ToLower, LowersLettersInPlace) {
    std::string text = "C:\\AbC@[`{Z9.KRA";
    toLower(text);
    EXPECT_EQ(text, "c:\\abc@[`{z9.kra");
}

TEST(ToLower, TakesEveryCharacterFromTheCodePage) {
    std::string text;
    std::string expected;
    for (int code = 0; code < 256; ++code) {
        text += static_cast<char>(code);
        expected += lowerCase(static_cast<char>(code));
    }
    toLower(text);
    EXPECT_EQ(text, expected);
}

struct IntegerCase {
    const char* text;
    int base;
    std::int64_t expected;
};

class ToInteger : public testing::TestWithParam<IntegerCase> {};

TEST_P(ToInteger, ReadsTheNumberAtTheStart) {
    const IntegerCase& row = GetParam();
    EXPECT_EQ(toInteger(row.text, row.base), row.expected) << '"' << row.text << "\" in base " << row.base;
}

INSTANTIATE_TEST_SUITE_P(
    Table, ToInteger,
    testing::Values(IntegerCase{"  -42abc", 10, -42}, IntegerCase{"ff", 16, 255}, IntegerCase{"z", 36, 35},
                    IntegerCase{"- 5", 10, 0}, IntegerCase{"", 10, 0}, IntegerCase{"-", 10, 0},
                    IntegerCase{"abc", 10, 0}, IntegerCase{"+7", 10, 7}, IntegerCase{"+-7", 10, 0},
                    IntegerCase{"--7", 10, 0}, IntegerCase{" \t\n\v\f\r12", 10, 12},
                    IntegerCase{"\x08"
                                "12",
                                10, 0},
                    IntegerCase{"\x0E"
                                "12",
                                10, 0},
                    IntegerCase{"12 34", 10, 12}, IntegerCase{"007", 10, 7}, IntegerCase{"9/:", 10, 9},
                    IntegerCase{"FfG", 16, 255}, IntegerCase{"0x10", 16, 0}, IntegerCase{"1012", 2, 5},
                    IntegerCase{"778", 8, 63}, IntegerCase{"a9b", 11, 119}, IntegerCase{"ZZ", 36, 1295},
                    IntegerCase{"z{", 36, 35}, IntegerCase{"a@", 16, 10}, IntegerCase{"5a", 10, 5},
                    IntegerCase{"\xB2", 10, 0}, IntegerCase{"\xE1", 36, 0},
                    IntegerCase{"9223372036854775807", 10, std::numeric_limits<std::int64_t>::max()},
                    IntegerCase{"-9223372036854775808", 10, std::numeric_limits<std::int64_t>::min()}));

/// Zero to nine, then the letters in either case; 99 for what is a digit in no base.
int digitIn36(int code) {
    if (code >= '0' && code <= '9')
        return code - '0';
    if (code >= 'a' && code <= 'z')
        return code - 'a' + 10;
    return code >= 'A' && code <= 'Z' ? code - 'A' + 10 : 99;
}

TEST(ToIntegerDigits, AreThoseOfTheBase) {
    for (int base = 2; base <= 36; ++base)
        for (int code = 0; code < 256; ++code) {
            const std::string text = std::string("1") + static_cast<char>(code) + "1";
            const int digit = digitIn36(code);
            ASSERT_EQ(toInteger(text, base), digit < base ? (base + digit) * base + 1 : 1)
                << "character " << code << " in base " << base;
        }
}

TEST(ToIntegerStart, SkipsBlanksAndTheControlCharactersFrom9To13Only) {
    for (int code = 0; code < 256; ++code) {
        if (digitIn36(code) < 10 || code == '+' || code == '-')
            continue;
        const bool skipped = code == ' ' || (code >= 9 && code <= 13);
        ASSERT_EQ(toInteger(static_cast<char>(code) + std::string("7"), 10), skipped ? 7 : 0) << code;
    }
}

TEST(ToIntegerOverflow, WrapsAround) {
    EXPECT_EQ(toInteger("18446744073709551617", 10), 1);
    EXPECT_EQ(toInteger("-18446744073709551617", 10), -1);
    EXPECT_EQ(toInteger("9223372036854775808", 10), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(toInteger("1FFFFFFFFFFFFFFFF", 16), -1);
    EXPECT_EQ(toInteger("10000000000000000", 16), 0);
    EXPECT_EQ(toInteger(std::string(1000, 'z'), 36), toInteger(std::string(999, 'z'), 36) * 36 + 35);
}

TEST(Fill, AppendsUpToTheCount) {
    std::string text;
    fill(text, 3, 'x');
    EXPECT_EQ(text, "xxx");
    text = "ab";
    fill(text, 4, '-');
    EXPECT_EQ(text, "----");
    text = "ab";
    fill(text, 2, '-');
    EXPECT_EQ(text, "--");
}

TEST(Fill, LongerTextKeepsItsTail) {
    std::string text = "abcdef";
    fill(text, 2, '*');
    EXPECT_EQ(text, "**cdef");
    fill(text, 0, '?');
    EXPECT_EQ(text, "**cdef");
    fill(text, 6, '\xFF');
    EXPECT_EQ(text, "\xFF\xFF\xFF\xFF\xFF\xFF");
}

TEST(PieceAt, CutsAtEachSeparator) {
    constexpr std::string_view text = "Sun Nov 6 08:49:37 1994";
    EXPECT_EQ(pieceAt(text, 0, ' '), "Sun");
    EXPECT_EQ(pieceAt(text, 1, ' '), "Nov");
    EXPECT_EQ(pieceAt(text, 4, ' '), "1994");
    EXPECT_EQ(pieceAt(text, 5, ' '), "");
    EXPECT_EQ(pieceAt(text, 1000, ' '), "");
    EXPECT_EQ(pieceAt(text, 0, '|'), text);
    EXPECT_EQ(pieceAt(text, 1, '|'), "");
    EXPECT_EQ(pieceAt("", 0, ' '), "");
}

TEST(PieceAt, TwoSeparatorsInARowHaveAnEmptyPieceBetween) {
    EXPECT_EQ(pieceAt("Nov  6", 0, ' '), "Nov");
    EXPECT_EQ(pieceAt("Nov  6", 1, ' '), "");
    EXPECT_EQ(pieceAt("Nov  6", 2, ' '), "6");
}

TEST(PieceAt, SeparatorsAtTheEndsHaveEmptyPiecesBeside) {
    EXPECT_EQ(pieceAt("/a/", 0, '/'), "");
    EXPECT_EQ(pieceAt("/a/", 1, '/'), "a");
    EXPECT_EQ(pieceAt("/a/", 2, '/'), "");
    EXPECT_EQ(pieceAt("/a/", 3, '/'), "");
    EXPECT_EQ(pieceAt("a\xFF\xE4", 1, '\xFF'), "\xE4");
}

} // namespace
} // namespace base
