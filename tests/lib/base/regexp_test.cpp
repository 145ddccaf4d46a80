#include "lib/base/regexp.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace base {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Expression, MatchesWholeTextsOnly) {
    const Expression extension("kr[abc]");
    EXPECT_TRUE(extension.matches("kra"));
    EXPECT_TRUE(extension.matches("krb"));
    EXPECT_TRUE(extension.matches("krc"));
    EXPECT_FALSE(extension.matches("krd"));
    EXPECT_FALSE(extension.matches("krab"));
    EXPECT_FALSE(extension.matches("akra"));
    EXPECT_FALSE(extension.matches("kr"));
    EXPECT_FALSE(extension.matches(""));
}

TEST(Expression, RegardsCaseUnlessToldOtherwise) {
    EXPECT_FALSE(Expression("gmt").matches("GMT"));
    EXPECT_FALSE(Expression("gmt", CaseRule::Sensitive).matches("GMT"));
    EXPECT_TRUE(Expression("gmt", CaseRule::Insensitive).matches("GMT"));
    EXPECT_TRUE(Expression("[a-z]+", CaseRule::Insensitive).matches("GmT"));
}

TEST(Expression, PrefixOverridesTheDefaultRule) {
    EXPECT_TRUE(Expression("[i]gmt", CaseRule::Sensitive).matches("GMT"));
    EXPECT_TRUE(Expression("[i]gmt", CaseRule::Insensitive).matches("GMT"));
    EXPECT_FALSE(Expression("[c]gmt", CaseRule::Insensitive).matches("GMT"));
    EXPECT_TRUE(Expression("[c]gmt", CaseRule::Insensitive).matches("gmt"));
    EXPECT_FALSE(Expression("[c]gmt", CaseRule::Sensitive).matches("GMT"));
}

TEST(Expression, PrefixIsNotPartOfThePattern) {
    EXPECT_FALSE(Expression("[i]gmt").matches("igmt"));
    EXPECT_FALSE(Expression("[c]gmt").matches("cgmt"));
}

TEST(Expression, OnlyTheThreeCharactersAtTheStartAreAPrefix) {
    EXPECT_TRUE(Expression("[ci]x").matches("ix"));
    EXPECT_TRUE(Expression("[a]x").matches("ax"));
    EXPECT_TRUE(Expression("x[i]").matches("xi"));
    EXPECT_FALSE(Expression("x[i]").matches("X"));
    EXPECT_TRUE(Expression("[i][c]x").matches("Cx"));
    EXPECT_FALSE(Expression("[I]x", CaseRule::Sensitive).matches("X"));
}

TEST(Expression, MalformedPatternIsAMistakeInTheProgram) {
    EXPECT_THROW(Expression("(a"), std::runtime_error);
    EXPECT_THROW(Expression("[a"), std::runtime_error);
    EXPECT_THROW(Expression("[c"), std::runtime_error);
    EXPECT_THROW(Expression("[z-a]"), std::runtime_error);
    EXPECT_THROW(Expression("a{2,1}"), std::runtime_error);
    EXPECT_THROW(Expression("a{2"), std::runtime_error);
    EXPECT_THROW(Expression("*"), std::runtime_error);
    EXPECT_THROW(Expression("a\\"), std::runtime_error);
    EXPECT_THROW(Expression("[i](a"), std::runtime_error);
}

TEST(Expression, TakesTheLeftmostLongestMatch) {
    EXPECT_THAT(Expression("jul|july|ju").matchesIn("xjulyx"), ElementsAre("july"));
    EXPECT_THAT(Expression("a|ab|abc").matchesIn("abcab"), ElementsAre("abc", "ab"));
}

TEST(Expression, FindsEveryMatchInOrder) {
    EXPECT_THAT(Expression("[0-9]+").matchesIn("9:05, 17"), ElementsAre("9", "05", "17"));
    EXPECT_THAT(Expression("[0-9]+").matchesIn("none"), IsEmpty());
    EXPECT_THAT(Expression("[0-9]+").matchesIn(""), IsEmpty());
}

TEST(Expression, RemovesItsMatches) {
    EXPECT_EQ(Expression("%[1-9]").removeFrom(R"("C:\Spider.exe" %1 "%9" %0 %%2)"),
              R"("C:\Spider.exe"  "" %0 %)");
    EXPECT_EQ(Expression("%[1-9]").removeFrom("%12"), "2");
    EXPECT_EQ(Expression("\"\"").removeFrom(R"(a "" b"""")"), "a  b");
    EXPECT_EQ(Expression("x").removeFrom("none"), "none");
    EXPECT_EQ(Expression("x").removeFrom("xxx"), "");
    EXPECT_EQ(Expression("x").removeFrom(""), "");
}

/// Pieces 0 to `count` - 1.
std::vector<std::string> firstPieces(std::string_view text, const Expression& separator, std::size_t count) {
    std::vector<std::string> pieces;
    for (std::size_t n = 0; n < count; ++n)
        pieces.push_back(piece(text, n, separator));
    return pieces;
}

TEST(Piece, CutsAtEveryMatch) {
    const Expression blanks("[ ]+");
    EXPECT_THAT(firstPieces("a  bc d", blanks, 4), ElementsAre("a", "bc", "d", ""));
    EXPECT_THAT(firstPieces("abc", blanks, 2), ElementsAre("abc", ""));
    EXPECT_THAT(firstPieces("", blanks, 2), ElementsAre("", ""));
    EXPECT_EQ(piece("a b", 1'000'000, blanks), "");
}

TEST(Piece, MatchesAtTheEndsHaveEmptyPiecesBeside) {
    const Expression blanks("[ ]+");
    EXPECT_THAT(firstPieces("  a b ", blanks, 4), ElementsAre("", "a", "b", ""));
    EXPECT_THAT(firstPieces(" ", blanks, 2), ElementsAre("", ""));
}

TEST(Piece, EmptyMatchesEndAndCutEachCharacter) {
    const Expression maybeX("x*");
    EXPECT_THAT(maybeX.matchesIn("axxb"), ElementsAre("", "xx", "", ""));
    EXPECT_EQ(maybeX.removeFrom("axxb"), "ab");
    EXPECT_EQ(piece("axxb", 1, maybeX), "a");
    EXPECT_EQ(piece("axxb", 1000, maybeX), "");
    EXPECT_EQ(piece("", 1000, maybeX), "");
    EXPECT_EQ(piece("", 0, maybeX), "");
    EXPECT_THAT(Expression("").matchesIn("ab"), ElementsAre("", "", ""));
}

TEST(Expression, MatchingThrowsWhenItsWorkExplodes) {
    EXPECT_THROW(Expression("(a|aa)+b").matches(std::string(100, 'a')), std::runtime_error);
}

TEST(Expression, TakesBytesAboveAsciiAsOrdinaryCharacters) {
    const Expression word("[^ ]+");
    for (int code = 1; code < 256; ++code) {
        if (code == ' ')
            continue;
        const std::string text = "a" + std::string(1, static_cast<char>(code));
        EXPECT_THAT(word.matchesIn(text + " b"), ElementsAre(text, "b")) << code;
        EXPECT_EQ(piece(text + ' ' + text, 1, Expression("[ ]+")), text) << code;
    }
    EXPECT_TRUE(Expression("b\xE4r").matches("b\xE4r"));
    EXPECT_FALSE(Expression("b\xE4r").matches("b\xC4r"));
    EXPECT_TRUE(Expression("[i]B\xE4R").matches("b\xE4r"));
    EXPECT_FALSE(Expression("[a-z]+", CaseRule::Insensitive).matches("\xDF"));
    EXPECT_EQ(Expression("\xFF+").removeFrom("a\xFF\xFF\xFE"), "a\xFE");
}

// In a list of POSIX's own syntax the backslash is an ordinary character; these expressions escape with it.

TEST(Separators, OfInternetDates) {
    constexpr std::string_view dashed = "Sunday, 06-Nov-94 08:49:37 GMT";
    constexpr std::string_view blank = "Sun, 06 Nov 1994 08:49:37 GMT";
    EXPECT_EQ(piece(blank, 1, Expression("[, ]+")), "06");
    const Expression words("[,\\- ]+");
    EXPECT_EQ(piece(dashed, 2, words), "Nov");
    EXPECT_EQ(piece(dashed, 3, words), "94");
    EXPECT_EQ(piece(blank, 2, words), "Nov");
    EXPECT_EQ(piece(blank, 3, words), "1994");
    EXPECT_EQ(piece("a\\b", 0, words), "a\\b");
    // The escaped hyphen makes no range.
    EXPECT_EQ(piece("a*b", 0, words), "a*b");
    const Expression clock("[ :\\-]+");
    EXPECT_THAT(firstPieces(dashed, clock, 8),
                ElementsAre("Sunday,", "06", "Nov", "94", "08", "49", "37", "GMT"));
    EXPECT_EQ(piece(blank, 4, clock), "08");
    EXPECT_EQ(piece("a\\b", 0, clock), "a\\b");
}

TEST(Separators, OfAsctimeDates) {
    EXPECT_THAT(firstPieces("Sun Nov 6 08:49:37 1994", Expression("[ :]+"), 8),
                ElementsAre("Sun", "Nov", "6", "08", "49", "37", "1994", ""));
}

TEST(Separators, OfFreeDates) {
    const Expression separator("[ /\\-#.\\\\:]+");
    EXPECT_THAT(firstPieces("1/2-3#4.5\\6:7 8", separator, 9),
                ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", ""));
    EXPECT_THAT(firstPieces("7/23/2005 7:54 pm", separator, 6),
                ElementsAre("7", "23", "2005", "7", "54", "pm"));
    EXPECT_THAT(firstPieces("23.7.05", separator, 3), ElementsAre("23", "7", "05"));
    EXPECT_EQ(piece("a,b$c", 0, separator), "a,b$c");
}

TEST(Expression, CopesWithLongTexts) {
    const std::string word(200'000, 'a');
    EXPECT_EQ(piece(word + ' ' + word, 1, Expression("[ ]+")), word);
    const std::string quoted = '"' + word + ' ' + word + '"';
    EXPECT_THAT(Expression(R"([^ ]+|"[^"]*")").matchesIn(quoted + " x"), ElementsAre(quoted, "x"));
    EXPECT_EQ(Expression("%[1-9]").removeFrom(word + "%1"), word);
}

} // namespace
} // namespace base
