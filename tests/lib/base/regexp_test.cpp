#include "lib/base/expressions.h"
#include "lib/base/placeholders.h"
#include "lib/base/regexp.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace base {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(Regexp, MatchesWholeTextsOnly) {
    const Expression extension("kr[abc]");
    for (const char* text : {"kra", "krb", "krc"})
        EXPECT_TRUE(extension.matches(text)) << text;
    for (const char* text : {"krd", "krab", "akra", "kr", ""})
        EXPECT_FALSE(extension.matches(text)) << text;
}

TEST(Regexp, PrefixOverridesTheDefaultCaseRule) {
    constexpr auto sensitive = CaseRule::Sensitive;
    constexpr auto insensitive = CaseRule::Insensitive;
    const struct {
        const char* pattern;
        CaseRule rule;
        const char* text;
        bool matches;
    } rows[] = {
        {"gmt", sensitive, "GMT", false},      {"gmt", insensitive, "GMT", true},
        {"[a-z]+", insensitive, "GmT", true},  {"[i]gmt", sensitive, "GMT", true},
        {"[c]gmt", insensitive, "GMT", false}, {"[c]gmt", insensitive, "gmt", true},
        {"[i]gmt", sensitive, "igmt", false},  {"[c]gmt", sensitive, "cgmt", false},
        {"[ci]x", sensitive, "ix", true},      {"[a]x", sensitive, "ax", true},
        {"x[i]", sensitive, "xi", true},       {"x[i]", sensitive, "X", false},
        {"[i][c]x", sensitive, "Cx", true},    {"[I]x", sensitive, "X", false},
    };
    for (const auto& [pattern, rule, text, matches] : rows)
        EXPECT_EQ(Expression(pattern, rule).matches(text), matches) << pattern << ' ' << text;
    EXPECT_FALSE(Expression("gmt").matches("GMT"));
}

TEST(Regexp, MalformedPatternThrows) {
    for (const char* pattern : {"(a", "[a", "[c", "[z-a]", "a{2,1}", "a{2", "*", "a\\", "[i](a"})
        EXPECT_THROW(Expression{pattern}, std::runtime_error) << pattern;
}

TEST(Regexp, FindsTheLeftmostLongestMatchesInOrder) {
    EXPECT_THAT(Expression("jul|july|ju").matchesIn("xjulyx"), ElementsAre("july"));
    EXPECT_THAT(Expression("a|ab|abc").matchesIn("abcab"), ElementsAre("abc", "ab"));
    EXPECT_THAT(Expression("[0-9]+").matchesIn("9:05, 17"), ElementsAre("9", "05", "17"));
    EXPECT_THAT(Expression("[0-9]+").matchesIn(""), IsEmpty());
}

TEST(Regexp, MatchesAreRemoved) {
    EXPECT_EQ(Expression("%[1-9]").removeFrom("%12 %0 %%9"), "2 %0 %");
    EXPECT_EQ(Expression("x").removeFrom("none"), "none");
    EXPECT_EQ(Expression("x").removeFrom("xxx"), "");
}

TEST(Regexp, EmptyMatchesEndTheSearchAndSplitEachCharacter) {
    const Expression maybeX("x*");
    EXPECT_THAT(maybeX.matchesIn("axxb"), ElementsAre("", "xx", "", ""));
    EXPECT_EQ(maybeX.removeFrom("axxb"), "ab");
    EXPECT_EQ(piece("axxb", 1, maybeX), "a");
    EXPECT_EQ(piece("axxb", 1000, maybeX), "");
    EXPECT_EQ(piece("", 1000, maybeX), "");
    EXPECT_EQ(piece("", 0, maybeX), "");
    EXPECT_THAT(Expression("").matchesIn("ab"), ElementsAre("", "", ""));
}

TEST(Regexp, MatchingThrowsWhenItBecomesTooComplex) {
    EXPECT_THROW(Expression("(a|aa)+b").matches(std::string(100, 'a')), std::runtime_error);
}

TEST(Regexp, BytesAboveAsciiAreOrdinaryCharacters) {
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

TEST(Regexp, MatchesLongTexts) {
    const std::string word(200'000, 'a');
    EXPECT_EQ(piece(word + ' ' + word, 1, Expression("[ ]+")), word);
    const std::string quoted = '"' + word + ' ' + word + '"';
    EXPECT_THAT(commandToken.matchesIn(quoted + " x"), ElementsAre(quoted, "x"));
}

void expectPieces(std::string_view text, const Expression& separator, std::vector<std::string> expected) {
    expected.emplace_back();
    std::vector<std::string> pieces;
    for (std::size_t n = 0; n < expected.size(); ++n)
        pieces.push_back(piece(text, n, separator));
    EXPECT_THAT(pieces, ElementsAreArray(expected)) << text;
}

TEST(Regexp, SplitsAtEveryMatch) {
    const Expression blanks("[ ]+");
    expectPieces("a  bc d", blanks, {"a", "bc", "d"});
    expectPieces("abc", blanks, {"abc"});
    expectPieces("", blanks, {""});
    expectPieces("  a b ", blanks, {"", "a", "b", ""});
    EXPECT_EQ(piece("a b", 1'000'000, blanks), "");
}

TEST(Regexp, SplitsAtWhitespaceAndLineBreaks) {
    expectPieces("a \r\n\t\fb\vc", whitespaceRun, {"a", "b\vc"});
    expectPieces("rntf\\", whitespaceRun, {"rntf\\"});
    expectPieces("one\ntwo\r\nthree\r\r\n\nlast\rone", lineBreak, {"one", "two", "three", "", "last\rone"});
}

TEST(Regexp, CommandTokenIsAWordOrAQuotedTextWhicheverIsLonger) {
    const struct {
        std::string text;
        std::vector<std::string> words;
    } rows[] = {
        {"  notepad.exe\t/a \r\n\f b.txt ", {"notepad.exe", "/a", "b.txt"}},
        {" \t", {}},
        {R"("C:\Program Files\spider.exe" 7 "C:\My Sites\a b.kra" /s)",
         {R"("C:\Program Files\spider.exe")", "7", R"("C:\My Sites\a b.kra")", "/s"}},
        {R"(run.exe /out="a b" "/in=c d")", {"run.exe", R"(/out="a)", R"(b")", R"("/in=c d")"}},
        {"\"C:\\\xD6l \xDF\\s.exe\" \xA0\xFF x", {"\"C:\\\xD6l \xDF\\s.exe\"", "\xA0\xFF", "x"}},
        {R"("a"b c)", {R"("a"b)", "c"}},
        {R"("a b"c d)", {R"("a b")", "c", "d"}},
        {R"(x"a b" c)", {R"(x"a)", R"(b")", "c"}},
        {"\"never closed", {"\"never", "closed"}},
        {"\"a\r\n\tb\" c", {"\"a\r\n\tb\"", "c"}},
    };
    for (const auto& [text, words] : rows)
        EXPECT_EQ(commandToken.matchesIn(text), words) << text;
}

TEST(Regexp, PlaceholdersAreRemovedWithTheirQuotesAndOuterSpaces) {
    const struct {
        const char *registered, *expected;
    } rows[] = {
        {"spider.exe \"%1\" %2 \"%9\"", "spider.exe"},
        {"spider.exe %1%2%3%4%5%6%7%8%9", "spider.exe"},
        {"spider.exe %1 /open", "spider.exe  /open"},
        {"\"spider.exe\" \"/open:%1\"", "\"spider.exe\" \"/open:\""},
        {"spider.exe %0 %* %L %%", "spider.exe %0 %* %L %%"},
        {"spider.exe %%1", "spider.exe %"},
        {"spider.exe \"\" x", "spider.exe  x"}, // any empty pair of quotes is removed
        {"spider.exe \"\"\"", "spider.exe \""},
        {" \t\r\n\f\"spider.exe\" \f\r\n\t ", "\"spider.exe\""},
        {"\v spider.exe", "\v spider.exe"},
    };
    for (const auto& [registered, expected] : rows)
        EXPECT_EQ(withoutPlaceholders(registered), expected) << registered;
}

// A quadratic algorithm would exceed the time limit.
TEST(Regexp, MillionsOfEmptyQuotesAreRemovedInLinearTime) {
    constexpr std::size_t count = 2'000'000;
    std::string command;
    for (std::size_t i = 0; i < count; ++i)
        command += "a\"\"";
    EXPECT_EQ(withoutPlaceholders(command), std::string(count, 'a'));
}

} // namespace
} // namespace base
