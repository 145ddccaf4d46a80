#include "lib/base/strings.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cctype>
#include <string>

namespace base {
namespace {

using testing::Eq;
using testing::Gt;
using testing::Lt;

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

} // namespace
} // namespace base
