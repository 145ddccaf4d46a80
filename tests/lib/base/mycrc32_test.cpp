#include "lib/base/mycrc32.h"

#include <gmock/gmock.h>

#include <string_view>

namespace base {
namespace {

std::uint32_t crcOf(std::string_view text) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char character : text)
        crc = crc >> 8 ^ crc32Table[(crc ^ static_cast<unsigned char>(character)) & 0xFF];
    return ~crc;
}

TEST(Crc32Table, GivesTheStandardsCheckValue) {
    EXPECT_EQ(crcOf("123456789"), 0xCBF43926U);
    EXPECT_EQ(crcOf(""), 0U);
}

TEST(Crc32Table, HasTheKnownEntries) {
    EXPECT_EQ(crc32Table.size(), 256U);
    EXPECT_EQ(crc32Table[0], 0U);
    EXPECT_EQ(crc32Table[1], 0x77073096U);
    EXPECT_EQ(crc32Table[128], 0xEDB88320U);
    EXPECT_EQ(crc32Table[255], 0x2D02EF8DU);
}

TEST(Crc32Table, IsLinear) {
    for (std::uint32_t a = 0; a < 256; ++a)
        for (std::uint32_t b = 0; b < 256; ++b)
            ASSERT_EQ(crc32Table[a] ^ crc32Table[b], crc32Table[a ^ b]) << a << ' ' << b;
}

} // namespace
} // namespace base
