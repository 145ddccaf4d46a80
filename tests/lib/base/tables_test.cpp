#include "lib/base/encodings.h"
#include "lib/base/mycrc32.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace base {
namespace {

std::uint32_t crcOf(std::string_view text) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char character : text)
        crc = crc >> 8 ^ crc32Table[(crc ^ static_cast<unsigned char>(character)) & 0xFF];
    return ~crc;
}

TEST(Tables, Crc32GivesTheStandardsCheckValue) {
    EXPECT_EQ(crcOf("123456789"), 0xCBF43926U);
    EXPECT_EQ(crc32Table.size(), 256U);
    EXPECT_EQ(crc32Table[128], 0xEDB88320U);
    EXPECT_EQ(crc32Table[255], 0x2D02EF8DU);
}

// Each entry of a CRC table is the XOR of the entries at the powers of two in its index.
TEST(Tables, Crc32IsLinear) {
    for (std::uint32_t a = 0; a < 256; ++a)
        for (std::uint32_t b = 0; b < 256; ++b)
            ASSERT_EQ(crc32Table[a] ^ crc32Table[b], crc32Table[a ^ b]) << a << ' ' << b;
}

std::string range(char first, char last) {
    std::string text;
    for (int code = first; code <= last; ++code)
        text += static_cast<char>(code);
    return text;
}

TEST(Tables, AlphabetsMatchTheirEncodings) {
    EXPECT_EQ(base64Alphabet, range('A', 'Z') + range('a', 'z') + range('0', '9') + "+/");
    EXPECT_EQ(uuencodeAlphabet, '`' + range('!', '_'));
    EXPECT_EQ(xxencodeAlphabet, "+-" + range('0', '9') + range('A', 'Z') + range('a', 'z'));
    EXPECT_EQ(binhexAlphabet, "!\"#$%&'()*+,-012345689@ABCDEFGHIJKLMNPQRSTUVXYZ[`abcdefhijklmpqr");
    EXPECT_EQ(lowerFirstBase64Alphabet, "abcdefghijk@mnopqrstuvwxyzABCDEFGHIJKLMN#PQRSTUVWXYZ0123456789+/");
}

} // namespace
} // namespace base
