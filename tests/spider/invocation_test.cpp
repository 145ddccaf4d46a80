#include "tests/spider/invocation.h"

#include <gtest/gtest.h>

namespace spider {
namespace {

TEST(Invocation, ReadsARunWithEverySwitch) {
    const Invocation invocation =
        parseInvocation("\"C:\\Program Files\\spider.exe\" -fixed /s12 /u \"/aOffice line\" /d /t30 /e "
                        "\"D:\\My Projects\\news.kra\"");
    EXPECT_FALSE(invocation.registerTypes);
    EXPECT_EQ(invocation.runNumber, 12u);
    EXPECT_EQ(invocation.runCommand, 'u');
    EXPECT_EQ(invocation.dialupEntry, "Office line");
    EXPECT_TRUE(invocation.disconnectWhenDone);
    EXPECT_EQ(invocation.timeLimitMinutes, 30);
    EXPECT_TRUE(invocation.endWhenDone);
    EXPECT_EQ(invocation.projectPath, "D:\\My Projects\\news.kra");
}

TEST(Invocation, ReadsTheShortestRun) {
    const Invocation invocation = parseInvocation("\"C:\\spider.exe\" /s1 /l \"C:\\a.kra\"");
    EXPECT_EQ(invocation.runNumber, 1u);
    EXPECT_EQ(invocation.runCommand, 'l');
    EXPECT_EQ(invocation.dialupEntry, "");
    EXPECT_FALSE(invocation.disconnectWhenDone);
    EXPECT_FALSE(invocation.timeLimitMinutes.has_value());
    EXPECT_FALSE(invocation.endWhenDone);
}

TEST(Invocation, KnowsEachRunCommand) {
    for (const char command : {'r', 'u', 'l', 'c'})
        EXPECT_EQ(parseInvocation(std::string("spider /s1 /") + command + " a.kra").runCommand, command);
    EXPECT_EQ(parseInvocation("spider /s1 /x a.kra").runCommand, 0);
}

TEST(Invocation, WithoutANumberItIsOpenedByHand) {
    const Invocation invocation = parseInvocation("\"C:\\spider.exe\" \"C:\\My Projects\\a.kra\"");
    EXPECT_FALSE(invocation.runNumber.has_value());
    EXPECT_FALSE(invocation.registerTypes);
    EXPECT_EQ(invocation.projectPath, "C:\\My Projects\\a.kra");
}

TEST(Invocation, Registers) {
    EXPECT_TRUE(parseInvocation("spider.exe /register").registerTypes);
    EXPECT_FALSE(parseInvocation("spider.exe /r").registerTypes);
    EXPECT_FALSE(parseInvocation("/register").registerTypes) << "the first word is the program";
}

TEST(Invocation, PassesOverWhatMeansNothing) {
    const Invocation invocation = parseInvocation("spider / // /x \"\" /s7");
    EXPECT_EQ(invocation.runNumber, 7u);
    EXPECT_EQ(invocation.projectPath, "");
    EXPECT_EQ(parseInvocation("").projectPath, "");
}

} // namespace
} // namespace spider
