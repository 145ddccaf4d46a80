#include "scheduler/ui/commandswitches.h"

#include <gtest/gtest.h>

namespace {

using scheduler::asksForHiddenStart;
using scheduler::asksToClose;

TEST(CommandSwitches, CloseIsAPrefixInAnyCase) {
    EXPECT_TRUE(asksToClose("/close"));
    EXPECT_TRUE(asksToClose("/CLOSE"));
    EXPECT_TRUE(asksToClose("/Close now"));
    EXPECT_FALSE(asksToClose("/clos"));
    EXPECT_FALSE(asksToClose(" /close"));
    EXPECT_FALSE(asksToClose(""));
}

TEST(CommandSwitches, HiddenStartIsAPrefixOfTheTrimmedLineInAnyCase) {
    EXPECT_TRUE(asksForHiddenStart("/s"));
    EXPECT_TRUE(asksForHiddenStart("/S"));
    EXPECT_TRUE(asksForHiddenStart(" \t/s "));
    EXPECT_TRUE(asksForHiddenStart("/start"));
    EXPECT_FALSE(asksForHiddenStart("s"));
    EXPECT_FALSE(asksForHiddenStart("x /s"));
    EXPECT_FALSE(asksForHiddenStart("/close"));
    EXPECT_FALSE(asksForHiddenStart(""));
}

} // namespace
