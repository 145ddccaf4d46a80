#include "scheduler/ui/framework/resourcetext.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace {

using framework::resourceText;

TEST(ResourceText, IsFoundByItsNumberAndCompleteAtAnyLength) {
    EXPECT_EQ(resourceText(IDS_SHORT), "A text");
    std::string tens; // TWO_HUNDRED_AND_FIFTY of testdialogs.rc
    while (tens.size() < 250)
        tens += "0123456789";
    EXPECT_EQ(resourceText(IDS_BELOW), tens + "abcd");
    EXPECT_EQ(resourceText(IDS_AT), tens + "abcde");
    EXPECT_EQ(resourceText(IDS_ABOVE), tens + "abcdef");
    EXPECT_EQ(resourceText(IDS_LONG), tens + tens + tens + "end");
    for (const UINT missing : {UINT{IDS_LONG + 1}, UINT{0}, UINT{0xFFFF}})
        EXPECT_EQ(resourceText(missing), "") << missing;
}

} // namespace
