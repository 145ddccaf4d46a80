#include "lib/base/encodings.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <set>
#include <string>

namespace base {
namespace {

std::string range(char first, char last) {
    std::string text;
    for (int code = first; code <= last; ++code)
        text += static_cast<char>(code);
    return text;
}

/// Three bytes as the four characters which all these encodings make of them.
std::string encoded(std::string_view alphabet, std::string_view bytes) {
    std::uint32_t bits = 0;
    for (const char byte : bytes)
        bits = bits << 8 | static_cast<unsigned char>(byte);
    return {alphabet[bits >> 18], alphabet[bits >> 12 & 63], alphabet[bits >> 6 & 63], alphabet[bits & 63]};
}

TEST(Alphabets, HaveSixtyFourDistinctCharacters) {
    for (const std::string_view alphabet :
         {base64Alphabet, uuencodeAlphabet, xxencodeAlphabet, binhexAlphabet, lowerFirstBase64Alphabet}) {
        EXPECT_EQ(alphabet.size(), 64U) << alphabet;
        EXPECT_EQ(std::set<char>(alphabet.begin(), alphabet.end()).size(), 64U) << alphabet;
    }
}

TEST(Base64Alphabet, IsTheStandardOne) {
    EXPECT_EQ(base64Alphabet, range('A', 'Z') + range('a', 'z') + range('0', '9') + "+/");
    EXPECT_EQ(encoded(base64Alphabet, "foo"), "Zm9v");
}

TEST(UuencodeAlphabet, IsTheGraveAccentAndThenTheCharactersFromTheExclamationMark) {
    EXPECT_EQ(uuencodeAlphabet, '`' + range('!', '_'));
    EXPECT_EQ(encoded(uuencodeAlphabet, "Cat"), "0V%T");
    EXPECT_EQ(encoded(uuencodeAlphabet, std::string_view("\0\0\0", 3)), "````");
}

TEST(XxencodeAlphabet, BeginsWithPlusAndMinus) {
    EXPECT_EQ(xxencodeAlphabet, "+-" + range('0', '9') + range('A', 'Z') + range('a', 'z'));
}

TEST(BinhexAlphabet, AscendsAndLeavesOutWhatIsEasilyMistaken) {
    std::string expected;
    for (const char character : range('!', 'r'))
        if (std::string_view("./7:;<=>?OW\\]^_gno").find(character) == std::string_view::npos)
            expected += character;
    EXPECT_EQ(binhexAlphabet, expected);
}

TEST(LowerFirstBase64Alphabet, HasTheAtSignForLAndTheHashSignForO) {
    std::string expected = range('a', 'z') + range('A', 'Z') + range('0', '9') + "+/";
    expected[expected.find('l')] = '@';
    expected[expected.find('O')] = '#';
    EXPECT_EQ(lowerFirstBase64Alphabet, expected);
}

} // namespace
} // namespace base
