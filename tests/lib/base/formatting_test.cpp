#include "lib/base/formatting.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <iterator>
#include <limits>
#include <random>
#include <string>

namespace base {
namespace {

using detail::estimateFormattedLength;

TEST(Formatting, EstimateAddsWidthAnd6ForEachConversion) {
    const struct {
        const char* pattern;
        std::size_t textsLength, expected;
    } rows[] = {{"", 0, 0},        {"text", 0, 4},        {"%s", 0, 8},     {"%s", 100, 108},
                {"%d", 0, 8},      {"%-10s", 3, 24},      {"%5.2f", 0, 16}, {"%.3s", 0, 13},
                {"%010s", 0, 21},  {"%+ #-.0%7s", 0, 23}, {"%% %s", 0, 11}, {"%%", 0, 2},
                {"%%%%", 0, 4},    {"%%%s", 0, 10},       {"100%%", 0, 5},  {"%s at %s", 8, 28},
                {"%", 0, 7},       {"% %s", 0, 10},       {"%12%s", 0, 29}, {"%5.200s", 0, 18},
                {"%s 200", 0, 12}, {"+-0 #.12 %s", 0, 17}};
    for (const auto& [pattern, textsLength, expected] : rows)
        EXPECT_EQ(estimateFormattedLength(pattern, textsLength), expected) << pattern;
}

const std::string widest = '%' + std::to_string(std::numeric_limits<long>::max()) + 's';

TEST(Formatting, EstimateSaturates) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(estimateFormattedLength((widest + widest).c_str(), 0), most);
    EXPECT_EQ(estimateFormattedLength((widest + widest + widest).c_str(), 0), most);
    EXPECT_EQ(estimateFormattedLength("%s", most), most);
    // A width saturates at LONG_MAX.
    EXPECT_EQ(estimateFormattedLength("%99999999999999999999s", 0),
              22 + static_cast<std::size_t>(std::numeric_limits<long>::max()) + 6);
}

TEST(Formatting, InsertsOneToFourTexts) {
    const std::string a = "one";
    const char* const b = "two";
    EXPECT_EQ(format("[%s]", a), "[one]");
    EXPECT_EQ(format("%s at %s", a, b), "one at two");
    EXPECT_EQ(format("%s,%s,%s", a, "", b), "one,,two");
    EXPECT_EQ(format("%s,%s,%s,%s", b, a, "three", "four"), "two,one,three,four");
    // Longer than the six characters estimated for a conversion.
    EXPECT_EQ(format("%s", "a rather long literal"), "a rather long literal");
}

TEST(Formatting, MissingTextsAreEmptyAndTextsAreNotFormatted) {
    EXPECT_EQ(format("%s|%s|%s|%s|", std::string("abc")), "abc||||");
    EXPECT_EQ(format("[%5.2s]100%%", std::string("abc")), "[   ab]100%");
    EXPECT_EQ(format("%s", "%s %d"), "%s %d");
}

TEST(Formatting, MatchesThePlatformsTextWithinTheEstimate) {
    std::mt19937 random(20260106);
    const char* const pieces[] = {"%s", "%-10s", "%.3s", "%250s", "%-77.5s", "%%", "text", "\xE4", "7"};
    for (int i = 0; i < 5000; ++i) {
        std::string pattern, texts[2] = {std::string(random() % 300, 'x'), std::string("a\0b", random() % 4)};
        for (std::size_t n = random() % 6; n > 0; --n)
            pattern += pieces[random() % std::size(pieces)];
        if (std::ranges::count(pattern, 's') > 2)
            continue;
        char expected[2000];
        const int length =
            snprintf(expected, sizeof expected, pattern.c_str(), texts[0].c_str(), texts[1].c_str());
        EXPECT_EQ(format(pattern.c_str(), texts[0], texts[1]), expected) << pattern;
        EXPECT_GE(estimateFormattedLength(pattern.c_str(), texts[0].size() + texts[1].size()),
                  static_cast<std::size_t>(length))
            << pattern;
    }
}

TEST(Formatting, LongResultsReplaceThePreviousText) {
    const std::string longText(100'000, 'x');
    std::string out = "before";
    EXPECT_TRUE(formatInto(out, "<%s|%s>", longText, longText));
    EXPECT_EQ(out, '<' + longText + '|' + longText + '>');
    EXPECT_TRUE(formatInto(out, "%s", "x"));
    EXPECT_EQ(out, "x");
}

TEST(Formatting, ResultIsEmptyWhenItIsTooLargeForAString) {
    for (const std::string& pattern : {widest, widest + widest, widest + widest + widest,
                                       std::string(sizeof(void*) == 4 ? "%2147480000s" : widest)}) {
        std::string out = "before";
        EXPECT_FALSE(formatInto(out, pattern.c_str(), "x")) << pattern;
        EXPECT_EQ(out, "") << pattern;
    }
}

TEST(Formatting, DoesNotAllocateWhenTheCapacityIsSufficient) {
    const std::string text(50, 'x');
    std::string out;
    out.reserve(200);
    const std::size_t before = test::allocationCount;
    const bool done = formatInto(out, "%s and %s", text, text);
    EXPECT_EQ(test::allocationCount, before);
    EXPECT_TRUE(done);
    EXPECT_EQ(out, text + " and " + text);
}

TEST(Formatting, ResultIsEmptyWithoutMemory) {
    const std::string text(200, 'x');
    std::string out = "before";
    std::string fresh = "before";
    bool done = true;
    {
        const test::RefusedAllocations refused;
        done = formatInto(out, "%s", text);
        fresh = format("%s", text);
    }
    EXPECT_FALSE(done);
    EXPECT_EQ(out, "");
    EXPECT_EQ(fresh, "");
}

} // namespace
} // namespace base
