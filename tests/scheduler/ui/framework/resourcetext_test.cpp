#include "scheduler/ui/framework/resourcetext.h"
#include "tests/scheduler/ui/framework/testdialogs.h"

#include <gtest/gtest.h>

namespace {

using framework::resourceText;

TEST(ResourceText, IsFoundByItsNumberAndWholeHoweverLongItIs) {
    EXPECT_EQ(resourceText(IDS_SHORT), "A text");
    std::string tens; // as the resources have it
    while (tens.size() < 250)
        tens += "0123456789";
    EXPECT_EQ(resourceText(IDS_BEFORE), tens + "abcd");
    EXPECT_EQ(resourceText(IDS_AT), tens + "abcde");
    EXPECT_EQ(resourceText(IDS_BEHIND), tens + "abcdef");
    EXPECT_EQ(resourceText(IDS_LONG), tens + tens + tens + "end");
    for (const UINT missing : {UINT{IDS_LONG + 1}, UINT{0}, UINT{0xFFFF}})
        EXPECT_EQ(resourceText(missing), "") << missing;
}

} // namespace
