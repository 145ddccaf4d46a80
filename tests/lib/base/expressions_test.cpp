#include "lib/base/expressions.h"

#include <gmock/gmock.h>

namespace base {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(WhitespaceRun, CutsAtRuns) {
    EXPECT_EQ(piece("a \r\n\t\fb", 0, whitespaceRun), "a");
    EXPECT_EQ(piece("a \r\n\t\fb", 1, whitespaceRun), "b");
    EXPECT_EQ(piece("a\vb", 0, whitespaceRun), "a\vb");
    EXPECT_EQ(piece("rntf\\", 0, whitespaceRun), "rntf\\");
}

TEST(LineBreak, CutsLinesWithAndWithoutCarriageReturns) {
    constexpr std::string_view text = "one\ntwo\r\nthree\r\r\n\nlast\rone";
    EXPECT_EQ(piece(text, 0, lineBreak), "one");
    EXPECT_EQ(piece(text, 1, lineBreak), "two");
    EXPECT_EQ(piece(text, 2, lineBreak), "three");
    EXPECT_EQ(piece(text, 3, lineBreak), "");
    EXPECT_EQ(piece(text, 4, lineBreak), "last\rone");
    EXPECT_EQ(piece(text, 5, lineBreak), "");
}

TEST(CommandToken, TakesWords) {
    EXPECT_THAT(commandToken.matchesIn("  notepad.exe\t/a \r\n\f b.txt "),
                ElementsAre("notepad.exe", "/a", "b.txt"));
    EXPECT_THAT(commandToken.matchesIn(""), IsEmpty());
    EXPECT_THAT(commandToken.matchesIn(" \t"), IsEmpty());
    // Letters after a backslash are letters.
    EXPECT_THAT(commandToken.matchesIn(R"(C:\temp\net\file\run)"), ElementsAre(R"(C:\temp\net\file\run)"));
}

TEST(CommandToken, TakesAQuotedPathWithBlanksAsOneWord) {
    EXPECT_THAT(
        commandToken.matchesIn(R"("C:\Program Files\Corvane\spider.exe" 7 "C:\My Sites\a b.kra" /s)"),
        ElementsAre(R"("C:\Program Files\Corvane\spider.exe")", "7", R"("C:\My Sites\a b.kra")", "/s"));
}

TEST(CommandToken, TakesAQuotedArgumentOnlyWhereAWordBegins) {
    EXPECT_THAT(commandToken.matchesIn(R"(run.exe /out="a b" "/in=c d")"),
                ElementsAre("run.exe", R"(/out="a)", R"(b")", R"("/in=c d")"));
}

TEST(CommandToken, TakesBytesAboveAsciiAsPartOfAWord) {
    EXPECT_THAT(commandToken.matchesIn("\"C:\\\xD6l \xDF\\s.exe\" \xA0\xFF x"),
                ElementsAre("\"C:\\\xD6l \xDF\\s.exe\"", "\xA0\xFF", "x"));
}

TEST(CommandToken, TakesWhicheverIsLonger) {
    EXPECT_THAT(commandToken.matchesIn(R"("a"b c)"), ElementsAre(R"("a"b)", "c"));
    EXPECT_THAT(commandToken.matchesIn(R"("a b"c d)"), ElementsAre(R"("a b")", "c", "d"));
    EXPECT_THAT(commandToken.matchesIn(R"(x"a b" c)"), ElementsAre(R"(x"a)", R"(b")", "c"));
    EXPECT_THAT(commandToken.matchesIn(R"("" a)"), ElementsAre(R"("")", "a"));
    EXPECT_THAT(commandToken.matchesIn("\"never closed"), ElementsAre("\"never", "closed"));
    EXPECT_THAT(commandToken.matchesIn("\"a\r\n\tb\" c"), ElementsAre("\"a\r\n\tb\"", "c"));
}

} // namespace
} // namespace base
