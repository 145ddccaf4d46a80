#include "lib/base/locale.h"
#include "lib/base/strings.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cctype>
#include <limits>
#include <string>

namespace base {
namespace {

using testing::Eq;
using testing::Gt;
using testing::Lt;

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

TEST(CompareNoCase, IgnoresCase) {
    EXPECT_THAT(compareNoCase("Spider.KRA", "sPIDER.kra"), Eq(0));
    EXPECT_THAT(compareNoCase("", ""), Eq(0));
    EXPECT_THAT(compareNoCase("a", "B"), Lt(0));
    EXPECT_THAT(compareNoCase("A", "b"), Lt(0));
    EXPECT_THAT(compareNoCase("b", "A"), Gt(0));
    EXPECT_THAT(compareNoCase("abC1", "ABc2"), Lt(0));
}

TEST(CompareNoCase, ComparesLoweredLetters) {
    // '_' lies between the upper-case and the lower-case letters.
    EXPECT_THAT(compareNoCase("_", "A"), Lt(0));
    EXPECT_THAT(compareNoCase("Z", "_"), Gt(0));
}

TEST(CompareNoCase, ShorterSortsFirstWhenItIsThePrefix) {
    EXPECT_THAT(compareNoCase("abc", "ABCD"), Lt(0));
    EXPECT_THAT(compareNoCase("ABCD", "abc"), Gt(0));
    EXPECT_THAT(compareNoCase("", "a"), Lt(0));
    EXPECT_THAT(compareNoCase("b", "abc"), Gt(0));
}

TEST(CompareNoCase, TakesCharactersAsUnsigned) {
    EXPECT_THAT(compareNoCase("\xE4", "z"), Gt(0));
    EXPECT_THAT(compareNoCase("z", "\xFF"), Lt(0));
    EXPECT_THAT(compareNoCase("\xE4", "\xE4"), Eq(0));
}

TEST(ComparingNoCase, KeepsEveryByteApartExceptTheCasesOfALetter) {
    for (int a = 0; a < 256; ++a)
        for (int b = 0; b < 256; ++b) {
            const std::string x(1, static_cast<char>(a));
            const std::string y(1, static_cast<char>(b));
            const int order = std::tolower(a) - std::tolower(b);
            ASSERT_EQ(compareNoCase(x, y) < 0, order < 0) << a << ' ' << b;
            ASSERT_EQ(compareNoCase(x, y) > 0, order > 0) << a << ' ' << b;
            ASSERT_EQ(startsWithNoCase(x + 'x', y), order == 0) << a << ' ' << b;
            ASSERT_EQ(endsWithNoCase('x' + x, y), order == 0) << a << ' ' << b;
            ASSERT_EQ(findNoCase(x, y), order == 0 ? 0 : notFound) << a << ' ' << b;
        }
}

TEST(ComparingNoCase, GoesOnBehindAZero) {
    const std::string a("x\0a", 3);
    const std::string b("X\0B", 3);
    EXPECT_THAT(compareNoCase(a, b), Lt(0));
    EXPECT_FALSE(startsWithNoCase(a, b));
    EXPECT_EQ(findNoCase(b, "b"), 2U);
}

TEST(StartsWithNoCase, ComparesTheStart) {
    EXPECT_TRUE(startsWithNoCase("RUN:notepad", "run:"));
    EXPECT_TRUE(startsWithNoCase("run:", "RUN:"));
    EXPECT_TRUE(startsWithNoCase("run", ""));
    EXPECT_FALSE(startsWithNoCase("run", "run:"));
    EXPECT_FALSE(startsWithNoCase("xrun:", "run:"));
    EXPECT_FALSE(startsWithNoCase("", "r"));
}

TEST(EndsWithNoCase, ComparesTheEnd) {
    EXPECT_TRUE(endsWithNoCase("08:49:37 Gmt", "gmt"));
    EXPECT_TRUE(endsWithNoCase("gmt", "GMT"));
    EXPECT_TRUE(endsWithNoCase("gmt", ""));
    EXPECT_FALSE(endsWithNoCase("mt", "gmt"));
    EXPECT_FALSE(endsWithNoCase("gmt ", "gmt"));
    EXPECT_FALSE(endsWithNoCase("", "g"));
}

struct FindCase {
    const char* text;
    const char* what;
    std::uint32_t from;
    std::uint32_t limit;
    std::uint32_t expected;
};

class FindNoCase : public testing::TestWithParam<FindCase> {};

TEST_P(FindNoCase, FindsTheFirstPosition) {
    const FindCase& row = GetParam();
    EXPECT_EQ(findNoCase(row.text, row.what, row.from, row.limit), row.expected)
        << '"' << row.what << "\" in \"" << row.text << "\" from " << row.from << " below " << row.limit;
}

INSTANTIATE_TEST_SUITE_P(
    Table, FindNoCase,
    testing::Values(FindCase{"P.M.", "p.m", 0, notFound, 0}, FindCase{"9:05 pM", "Pm", 0, notFound, 5},
                    FindCase{"abcabc", "ABC", 0, notFound, 0}, FindCase{"abcabc", "ABC", 1, notFound, 3},
                    FindCase{"abcabc", "abc", 3, notFound, 3},
                    FindCase{"abcabc", "abc", 4, notFound, notFound}, FindCase{"aab", "ab", 0, notFound, 1},
                    FindCase{"abcabc", "abc", 1, 3, notFound}, FindCase{"abcabc", "abc", 1, 4, 3},
                    FindCase{"abc", "abc", 0, 0, notFound}, FindCase{"abc", "abc", 0, 1, 0},
                    FindCase{"abc", "x", 0, notFound, notFound}, FindCase{"abc", "", 0, notFound, notFound},
                    FindCase{"", "", 0, notFound, notFound}, FindCase{"", "a", 0, notFound, notFound},
                    FindCase{"ab", "abc", 0, notFound, notFound}, FindCase{"abc", "c", 2, notFound, 2},
                    FindCase{"abc", "c", 3, notFound, notFound}, FindCase{"abc", "c", 4, notFound, notFound},
                    // The limit bounds where a match begins, not where it ends.
                    FindCase{"xabc", "abc", 0, 2, 1}, FindCase{"xabc", "abc", 0, 1, notFound},
                    FindCase{"abcabc", "abc", 3, 3, notFound}, FindCase{"abcabc", "abc", 3, 2, notFound},
                    FindCase{"abc", "c", notFound, notFound, notFound}));

TEST(FindNoCaseResult, NotFoundIsMinusOne) {
    EXPECT_EQ(notFound, 0xFFFFFFFFU);
}

TEST(ComparingNoCase, AllocatesNothing) {
    const std::string text(10'000, 'A');
    const std::string other = std::string(9'999, 'a') + 'b';
    const std::size_t before = test::allocationCount;
    const int order = compareNoCase(text, other);
    const std::uint32_t position = findNoCase(other, "aB");
    const bool starts = startsWithNoCase(text, other);
    const bool ends = endsWithNoCase(text, other);
    EXPECT_EQ(test::allocationCount, before);
    EXPECT_THAT(order, Lt(0));
    EXPECT_EQ(position, 9'998U);
    EXPECT_FALSE(starts);
    EXPECT_FALSE(ends);
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
