#include "scheduler/ui/framework/resourcetext.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace {

using framework::resourceText;

/// As the resources have it.
std::string digits(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += static_cast<char>('0' + i % 10);
    return text;
}

TEST(ResourceText, IsFoundByItsNumber) {
    EXPECT_EQ(resourceText(IDS_SHORT), "A text");
}

TEST(ResourceText, IsWholeHoweverLongItIs) {
    EXPECT_EQ(resourceText(IDS_BEFORE), digits(250) + "abcd");
    EXPECT_EQ(resourceText(IDS_AT), digits(250) + "abcde");
    EXPECT_EQ(resourceText(IDS_BEHIND), digits(250) + "abcdef");
    EXPECT_EQ(resourceText(IDS_LONG), digits(750) + "end");
}

TEST(ResourceText, AMissingOneIsEmpty) {
    EXPECT_EQ(resourceText(IDS_LONG + 1), "") << "beside others";
    EXPECT_EQ(resourceText(0), "");
    EXPECT_EQ(resourceText(0xFFFF), "");
}

} // namespace
