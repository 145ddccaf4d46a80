#include "lib/base/formatting.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <limits>
#include <string>

namespace base {
namespace {

// Patterns

TEST(FormatPattern, IsTheRuntimesTextOfTheLocalTime) {
    const TimeValue t = TimeValue::fromLocal(2005, 7, 27, 21, 30, 5, -1);
    EXPECT_EQ(formatPattern(t, "%a %b %d"), "Wed Jul 27");
    EXPECT_EQ(formatPattern(t, ", %Y"), ", 2005");
    EXPECT_EQ(formatPattern(t, "%m/%d/%y %I:%M"), "07/27/05 09:30");
    EXPECT_EQ(formatPattern(t, "%Y-%m-%d %H:%M:%S"), "2005-07-27 21:30:05");
    EXPECT_EQ(formatPattern(t, "100%%"), "100%");
    EXPECT_EQ(formatPattern(t, ""), "");
    EXPECT_EQ(formatPattern(TimeValue::never(), "%Y"), "2038");
}

TEST(FormatPattern, NoTimeAndNegativeTimesAreEmpty) {
    EXPECT_EQ(formatPattern(TimeValue(), "%Y"), "");
    EXPECT_EQ(formatPattern(TimeValue(-1), "%Y"), "");
    EXPECT_EQ(formatPattern(TimeValue(std::numeric_limits<std::int32_t>::min()), "text"), "");
}

TEST(FormatPattern, HoldsAtMost127Characters) {
    const std::string longest(127, 'x');
    EXPECT_EQ(formatPattern(TimeValue(86400), longest.c_str()), longest);
    EXPECT_LE(formatPattern(TimeValue(86400), (longest + 'x').c_str()).size(), 127U);
}

// Formatting

struct EstimateCase {
    const char* pattern;
    std::size_t textsLength;
    std::size_t expected;
};

TEST(EstimatedLength, AddsWidthAndSixForEachConversion) {
    for (const EstimateCase& row : {
             EstimateCase{"", 0, 0},
             EstimateCase{"text", 0, 4},
             EstimateCase{"%s", 0, 2 + 6},
             EstimateCase{"%s", 100, 2 + 6 + 100},
             EstimateCase{"%d", 0, 2 + 6},
             EstimateCase{"%-10s", 3, 5 + 16 + 3},
             EstimateCase{"%5.2f", 0, 5 + 11},
             EstimateCase{"%.3s", 0, 4 + 9},
             EstimateCase{"%010s", 0, 5 + 16},
             EstimateCase{"%+ #-.0%7s", 0, 10 + 13},
             EstimateCase{"%% %s", 0, 5 + 6},
             EstimateCase{"%%", 0, 2},
             EstimateCase{"%%%%", 0, 4},
             EstimateCase{"%%%s", 0, 4 + 6},
             EstimateCase{"%s at %s", 8, 8 + 12 + 8},
             EstimateCase{"%", 0, 1 + 6},
             EstimateCase{"% %s", 0, 4 + 6},
             EstimateCase{"%12%s", 0, 5 + 18 + 6},
         })
        EXPECT_EQ(detail::estimateFormattedLength(row.pattern, row.textsLength), row.expected) << row.pattern;
}

TEST(EstimatedLength, CountsDoubledPercentSignsAsTwoCharacters) {
    EXPECT_EQ(detail::estimateFormattedLength("100%%", 0), 5U);
}

TEST(EstimatedLength, BeyondItsTypeIsTheLargest) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    const std::string widest = '%' + std::to_string(std::numeric_limits<long>::max()) + 's';
    EXPECT_EQ(detail::estimateFormattedLength((widest + widest).c_str(), 0), most);
    EXPECT_EQ(detail::estimateFormattedLength((widest + widest + widest).c_str(), 0), most);
    EXPECT_EQ(detail::estimateFormattedLength("%s", most), most);
    // Digits beyond the type are read as its largest number.
    EXPECT_EQ(detail::estimateFormattedLength("%99999999999999999999s", 0),
              22 + static_cast<std::size_t>(std::numeric_limits<long>::max()) + 6);
}

TEST(EstimatedLength, CountsOnlyTheFirstNumberOfAConversion) {
    EXPECT_EQ(detail::estimateFormattedLength("%5.200s", 0), 7U + 11);
    EXPECT_EQ(detail::estimateFormattedLength("%s 200", 0), 6U + 6);
    // Flags come before the width; what stands elsewhere in the text counts as text.
    EXPECT_EQ(detail::estimateFormattedLength("+-0 #.12 %s", 0), 11U + 6);
}

TEST(Format, ComposesOneToFourTexts) {
    const std::string a = "one";
    const std::string b = "two";
    const std::string c = "three";
    const std::string d = "four";
    EXPECT_EQ(format("[%s]", a), "[one]");
    EXPECT_EQ(format("%s at %s", a, b), "one at two");
    EXPECT_EQ(format("%s,%s,%s", a, b, c), "one,two,three");
    EXPECT_EQ(format("%s,%s,%s,%s", a, b, c, d), "one,two,three,four");
}

TEST(Format, TakesLiteralsBesideStrings) {
    const std::string name = "News";
    const char* const verb = "ran";
    EXPECT_EQ(format("%s %s %s", name, verb, "today"), "News ran today");
    EXPECT_EQ(format("%s|%s", "", name), "|News");
    // More than the conversions' allowance of six characters each.
    EXPECT_EQ(format("%s", "a rather long literal"), "a rather long literal");
}

TEST(Format, LeavesBytesAboveAsciiAlone) {
    EXPECT_EQ(format("\xE4%s\xFF", std::string("\x80\xDF")), "\xE4\x80\xDF\xFF");
}

TEST(Format, KeepsThePlainText) {
    const std::string a = "x";
    EXPECT_EQ(format("", a), "");
    EXPECT_EQ(format("no conversion", a), "no conversion");
    EXPECT_EQ(format("100%% %s", a), "100% x");
    EXPECT_EQ(format("%s", std::string()), "");
    EXPECT_EQ(format("%s", std::string("%s %d")), "%s %d");
}

TEST(Format, ObeysWidthAndPrecision) {
    const std::string a = "abcdef";
    EXPECT_EQ(format("[%10s]", a), "[    abcdef]");
    EXPECT_EQ(format("[%-10s]", a), "[abcdef    ]");
    EXPECT_EQ(format("[%.3s]", a), "[abc]");
    EXPECT_EQ(format("[%5.2s]", a), "[   ab]");
    EXPECT_EQ(format("[%300s]", a), '[' + std::string(294, ' ') + "abcdef]");
}

TEST(Format, ConversionsBeyondTheTextsAreEmpty) {
    EXPECT_EQ(format("%s|%s|%s|%s|", std::string("a")), "a||||");
    EXPECT_EQ(format("%s|%s|%s|%s|", std::string("a"), std::string("b"), std::string("c")), "a|b|c||");
}

TEST(Format, TakesTextsAsZeroTerminated) {
    EXPECT_EQ(format("%s|", std::string("a\0b", 3)), "a|");
    EXPECT_EQ(format("%s|%s|", std::string("\0b", 2), std::string("c")), "|c|");
}

TEST(Format, HoldsLongTexts) {
    const std::string longText(100'000, 'x');
    EXPECT_EQ(format("<%s|%s>", longText, longText), '<' + longText + '|' + longText + '>');
}

TEST(FormatInto, ReplacesWhatWasThere) {
    std::string out = "something longer than the result";
    EXPECT_TRUE(formatInto(out, "%s", std::string("x")));
    EXPECT_EQ(out, "x");
}

TEST(FormatInto, UsesTheCapacityWhenItSuffices) {
    const std::string text(50, 'x');
    std::string out;
    out.reserve(200);
    const std::size_t before = test::allocationCount;
    const bool done = formatInto(out, "%s and %s", text, text);
    EXPECT_EQ(test::allocationCount, before);
    EXPECT_TRUE(done);
    EXPECT_EQ(out, text + " and " + text);
}

TEST(FormatInto, WithoutMemoryIsEmpty) {
    const std::string text(200, 'x');
    std::string out = "before";
    bool done = true;
    {
        const test::RefusedAllocations refused;
        done = formatInto(out, "%s", text);
    }
    EXPECT_FALSE(done);
    EXPECT_EQ(out, "");
}

TEST(Format, WithoutMemoryIsEmpty) {
    const std::string text(200, 'x');
    std::string out = "before";
    {
        const test::RefusedAllocations refused;
        out = format("%s", text);
    }
    EXPECT_EQ(out, "");
}

TEST(Format, WiderThanAnyStringIsEmpty) {
    const std::string widest = '%' + std::to_string(std::numeric_limits<long>::max()) + 's';
    for (const std::string& pattern : {widest, widest + widest, widest + widest + widest}) {
        std::string out = "before";
        EXPECT_FALSE(formatInto(out, pattern.c_str(), "x")) << pattern;
        EXPECT_EQ(out, "") << pattern;
    }
}

#ifdef _WIN32
TEST(Format, WiderThanTheAddressSpaceHasRoomForIsEmpty) {
    std::string out = "before";
    EXPECT_FALSE(formatInto(out, "%2147480000s", "x"));
    EXPECT_EQ(out, "");
}
#endif

} // namespace
} // namespace base
