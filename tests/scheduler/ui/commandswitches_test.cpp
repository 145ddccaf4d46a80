#include "scheduler/ui/commandswitches.h"

#include <gtest/gtest.h>

namespace {

using scheduler::asksForHiddenStart;
using scheduler::asksToClose;

TEST(CommandSwitches, CloseIsAPrefixInAnyCase) {
    for (const char* const line : {"/close", "/CLOSE", "/Close now"})
        EXPECT_TRUE(asksToClose(line)) << line;
    for (const char* const line : {"/clos", " /close", ""})
        EXPECT_FALSE(asksToClose(line)) << line;
}

TEST(CommandSwitches, HiddenStartIsAPrefixOfTheTrimmedLineInAnyCase) {
    for (const char* const line : {"/s", "/S", " \t/s ", "/start"})
        EXPECT_TRUE(asksForHiddenStart(line)) << line;
    for (const char* const line : {"s", "x /s", "/close", ""})
        EXPECT_FALSE(asksForHiddenStart(line)) << line;
}

} // namespace
