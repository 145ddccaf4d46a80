#include "lib/base/registry.h"
#include "tests/support/allocations.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace base {
namespace {

using namespace std::string_literals;
using test::RegistryTest;
using test::StoredValue;
using test::testsKey;

// --- texts

TEST_F(RegistryTest, TextComesBackAsItWasWritten) {
    for (const std::string& text : {"text"s, "x"s, " with blanks "s, "quote \" and \\ and %1"s,
                                    std::string(5000, 'l'), "line\r\nline"s}) {
        EXPECT_TRUE(writeString(HKEY_CURRENT_USER, path("Value"), text));
        std::string out = "old";
        EXPECT_TRUE(readString(HKEY_CURRENT_USER, path("Value"), out));
        EXPECT_EQ(out, text);
        EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Value")), text);
        EXPECT_EQ(loadValue("Value").type, DWORD{REG_SZ});
    }
}

TEST_F(RegistryTest, EveryTextTypeIsRead) {
    storeValue("Plain", REG_SZ, "plain\0"s);
    storeValue("Expand", REG_EXPAND_SZ, "%SystemRoot%\\x\0"s);
    storeValue("Multi", REG_MULTI_SZ, "one\0two\0\0"s);
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Plain")), "plain");
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Expand")), "%SystemRoot%\\x");
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Multi")), "one\0two"s);
}

TEST_F(RegistryTest, TextOfAnyOtherTypeIsRefused) {
    constexpr DWORD types[] = {REG_NONE, REG_BINARY, REG_DWORD, REG_DWORD_BIG_ENDIAN, REG_LINK, REG_QWORD};
    for (const DWORD type : types) {
        storeValue("Value", type, "1234"s);
        std::string out = "old";
        EXPECT_FALSE(readString(HKEY_CURRENT_USER, path("Value"), out)) << type;
        EXPECT_EQ(out, "old") << type;
        EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Value")), "") << type;
    }
}

TEST_F(RegistryTest, StringStoredWithTrailingZerosReadsBackWithoutThem) {
    storeValue("Value", REG_SZ, "text\0\0\0\0"s);
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Value")), "text");
}

TEST_F(RegistryTest, InnerZerosOfATextStay) {
    storeValue("Value", REG_SZ, "one\0two\0"s);
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Value")), "one\0two"s);
}

TEST_F(RegistryTest, TextOfZerosAloneIsReadAsEmpty) {
    storeValue("Value", REG_SZ, "\0\0"s);
    std::string out = "old";
    EXPECT_TRUE(readString(HKEY_CURRENT_USER, path("Value"), out));
    EXPECT_EQ(out, "");
}

TEST_F(RegistryTest, TextOfLengthZeroIsNotRead) {
    storeValue("Value", REG_SZ, "");
    ASSERT_EQ(loadValue("Value").status, ERROR_SUCCESS);
    std::string out = "old";
    EXPECT_FALSE(readString(HKEY_CURRENT_USER, path("Value"), out));
    EXPECT_EQ(out, "old");
}

TEST_F(RegistryTest, EmptyTextIsStoredWithLengthZero) {
    ASSERT_TRUE(writeString(HKEY_CURRENT_USER, path("Value"), "not empty"));
    EXPECT_TRUE(writeString(HKEY_CURRENT_USER, path("Value"), ""));
    const StoredValue value = loadValue("Value");
    EXPECT_EQ(value.status, ERROR_SUCCESS);
    EXPECT_EQ(value.type, DWORD{REG_SZ});
    EXPECT_EQ(value.size, 0U);
}

TEST_F(RegistryTest, ViewIntoALongerTextIsWrittenAlone) {
    const std::string text = "one two three";
    EXPECT_TRUE(writeString(HKEY_CURRENT_USER, path("Value"), std::string_view(text).substr(4, 3)));
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Value")), "two");
}

TEST_F(RegistryTest, CharactersOfTheCodePageComeBack) {
    std::string text;
    for (int character = 0xA0; character <= 0xFF; ++character)
        text += static_cast<char>(character);
    ASSERT_EQ(GetACP(), 1252U) << "the characters of this test are those of Western Europe";
    EXPECT_TRUE(writeString(HKEY_CURRENT_USER, path("Value"), text));
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("Value")), text);
}

// --- numbers

TEST_F(RegistryTest, NumberComesBackAsItWasWritten) {
    for (const std::uint32_t number : {0U, 1U, 20U, 0x12345678U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Value"), number));
        std::uint32_t out = 99;
        EXPECT_TRUE(readNumber(HKEY_CURRENT_USER, path("Value"), out));
        EXPECT_EQ(out, number);
        EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Value"), 99), number);
    }
    const StoredValue value = loadValue("Value");
    EXPECT_EQ(value.type, DWORD{REG_DWORD});
    EXPECT_EQ(value.bytes, "\xff\xff\xff\xff");
}

TEST_F(RegistryTest, NumberIsReadFromAnyTypeOfAtMostFourBytes) {
    storeValue("Text", REG_SZ, "abc\0"s);
    storeValue("Binary", REG_BINARY, "\x01\x02\x03\x04");
    storeValue("BigEndian", REG_DWORD_BIG_ENDIAN, "\x01\x02\x03\x04");
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Text"), 99), 0x00636261U);
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Binary"), 99), 0x04030201U);
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("BigEndian"), 99), 0x04030201U);
}

TEST_F(RegistryTest, BytesThatANumberLacksAreZero) {
    storeValue("Three", REG_BINARY, "\x01\x02\x03");
    storeValue("One", REG_BINARY, "\xff");
    storeValue("None", REG_BINARY, "");
    std::uint32_t out = 0xAAAAAAAA;
    EXPECT_TRUE(readNumber(HKEY_CURRENT_USER, path("Three"), out));
    EXPECT_EQ(out, 0x00030201U);
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("One"), 99), 0xFFU);
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("None"), 99), 0U);
}

TEST_F(RegistryTest, NumberLargerThanFourBytesIsRefused) {
    storeValue("Five", REG_BINARY, "12345");
    storeValue("Eight", REG_QWORD, "12345678");
    storeValue("Text", REG_SZ, "abcd\0"s);
    for (const char* name : {"Five", "Eight", "Text"}) {
        std::uint32_t out = 7;
        EXPECT_FALSE(readNumber(HKEY_CURRENT_USER, path(name), out)) << name;
        EXPECT_EQ(out, 7U) << name;
        EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path(name), 99), 99U) << name;
    }
}

// --- bytes

TEST_F(RegistryTest, BytesComeBackAsTheyWereWritten) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    bytes += "\0\0\0"s; // nothing is trimmed
    EXPECT_TRUE(writeBinary(HKEY_CURRENT_USER, path("Value"), bytes));
    EXPECT_EQ(loadValue("Value").type, DWORD{REG_BINARY});
    std::string out = "old";
    EXPECT_TRUE(readBinary(HKEY_CURRENT_USER, path("Value"), out));
    EXPECT_EQ(out, bytes);
}

TEST_F(RegistryTest, BytesOfAnyOtherTypeAreRefused) {
    constexpr DWORD types[] = {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_MULTI_SZ, REG_DWORD, REG_QWORD};
    for (const DWORD type : types) {
        storeValue("Value", type, "1234"s);
        std::string out = "old";
        EXPECT_FALSE(readBinary(HKEY_CURRENT_USER, path("Value"), out)) << type;
        EXPECT_EQ(out, "old") << type;
    }
}

TEST_F(RegistryTest, NoBytesAreWrittenButNotRead) {
    EXPECT_TRUE(writeBinary(HKEY_CURRENT_USER, path("Value"), {}));
    const StoredValue value = loadValue("Value");
    EXPECT_EQ(value.status, ERROR_SUCCESS);
    EXPECT_EQ(value.type, DWORD{REG_BINARY});
    EXPECT_EQ(value.size, 0U);
    std::string out = "old";
    EXPECT_FALSE(readBinary(HKEY_CURRENT_USER, path("Value"), out));
    EXPECT_EQ(out, "old");
}

TEST_F(RegistryTest, WithoutMemoryNothingIsRead) {
    storeValue("S", REG_SZ, std::string(100, 's'));
    storeValue("B", REG_BINARY, std::string(100, 'b'));
    RegistryKey above;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, testsKey, 0, KEY_READ, above.receive()), ERROR_SUCCESS);
    // Short enough for a string that allocates nothing.
    const std::string name = key_.path().substr(std::size(testsKey));
    ASSERT_LE(name.size(), 13U);
    const std::string text = name + "\\S";
    const std::string binary = name + "\\B";
    std::string out = "old";
    {
        const test::RefusedAllocations refused;
        EXPECT_FALSE(readString(above.get(), text, out));
        EXPECT_FALSE(readBinary(above.get(), binary, out));
    }
    EXPECT_EQ(out, "old");
    EXPECT_TRUE(readString(above.get(), text, out));
    EXPECT_TRUE(readBinary(above.get(), binary, out));
    EXPECT_EQ(out, std::string(100, 'b'));
}

} // namespace
} // namespace base
