#include "lib/base/registry.h"
#include "lib/base/registrystore.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace base {
namespace {

using namespace std::string_literals;
using test::StoredValue;

const HKEY user = HKEY_CURRENT_USER;

class Registry : public test::RegistryTest {
protected:
    static bool exists(const std::string& key) {
        RegistryKey opened;
        return RegOpenKeyExA(user, key.c_str(), 0, KEY_READ, opened.receive()) == ERROR_SUCCESS;
    }

    void expectStored(const char* name, DWORD type, DWORD size) const {
        const StoredValue value = loadValue(name);
        EXPECT_EQ(value.status, ERROR_SUCCESS);
        EXPECT_EQ(value.type, type);
        EXPECT_EQ(value.bytes.size(), size);
    }
};

TEST_F(Registry, TextRoundTrips) {
    ASSERT_EQ(GetACP(), 1252U) << "this test needs the Western European code page";
    std::string codePage;
    for (int character = 0xA0; character <= 0xFF; ++character)
        codePage += static_cast<char>(character);
    for (const std::string& text : {"text"s, "x"s, " with blanks "s, "quote \" and \\ and %1"s,
                                    std::string(5000, 'l'), "line\r\nline"s, codePage}) {
        EXPECT_TRUE(writeString(user, path("Value"), text));
        std::string out = "old";
        EXPECT_TRUE(readString(user, path("Value"), out));
        EXPECT_EQ(out, text);
        EXPECT_EQ(getString(user, path("Value")), text);
        EXPECT_EQ(loadValue("Value").type, DWORD{REG_SZ});
    }
    EXPECT_TRUE(writeString(user, path("Value"), std::string_view("one two three").substr(4, 3)));
    EXPECT_EQ(getString(user, path("Value")), "two");
}

TEST_F(Registry, TextIsReadFromAnyTextTypeWithoutTrailingZerosOrExpansion) {
    const struct {
        DWORD type;
        std::string stored, expected;
    } rows[] = {
        {REG_SZ, "plain\0"s, "plain"},
        {REG_EXPAND_SZ, "%SystemRoot%\\x\0"s, "%SystemRoot%\\x"},
        {REG_MULTI_SZ, "one\0two\0\0"s, "one\0two"s},
        {REG_SZ, "one\0two\0\0\0"s, "one\0two"s},
        {REG_SZ, "\0\0"s, ""},
    };
    for (const auto& [type, stored, expected] : rows) {
        storeValue("Value", type, stored);
        std::string out = "old";
        EXPECT_TRUE(readString(user, path("Value"), out)) << stored;
        EXPECT_EQ(out, expected);
    }
}

TEST_F(Registry, TextsAndBytesAreReadFromTheirOwnTypesOnly) {
    for (const auto type : {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_DWORD_BIG_ENDIAN,
                            REG_LINK, REG_MULTI_SZ, REG_QWORD}) {
        storeValue("Value", static_cast<DWORD>(type), "12345678"s);
        const bool isText = type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
        std::string text = "old";
        EXPECT_EQ(readString(user, path("Value"), text), isText) << type;
        EXPECT_EQ(text, isText ? "12345678" : "old") << type;
        std::string bytes = "old";
        EXPECT_EQ(readBinary(user, path("Value"), bytes), type == REG_BINARY) << type;
        EXPECT_EQ(bytes, type == REG_BINARY ? "12345678" : "old") << type;
    }
}

TEST_F(Registry, EmptyTextsAndBytesAreStoredButNotRead) {
    ASSERT_TRUE(writeString(user, path("Text"), "not empty"));
    EXPECT_TRUE(writeString(user, path("Text"), ""));
    EXPECT_TRUE(writeBinary(user, path("Bytes"), {}));
    expectStored("Text", REG_SZ, 0);
    expectStored("Bytes", REG_BINARY, 0);
    std::string out = "old";
    EXPECT_FALSE(readString(user, path("Text"), out));
    EXPECT_FALSE(readBinary(user, path("Bytes"), out));
    EXPECT_EQ(out, "old");
}

TEST_F(Registry, BytesRoundTrip) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    bytes += "\0\0\0"s; // must not be trimmed
    EXPECT_TRUE(writeBinary(user, path("Value"), bytes));
    EXPECT_EQ(loadValue("Value").type, DWORD{REG_BINARY});
    std::string out = "old";
    EXPECT_TRUE(readBinary(user, path("Value"), out));
    EXPECT_EQ(out, bytes);
}

TEST_F(Registry, NumberRoundTrips) {
    for (const std::uint32_t number : {0U, 1U, 20U, 0x12345678U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_TRUE(writeNumber(user, path("Value"), number));
        std::uint32_t out = 99;
        EXPECT_TRUE(readNumber(user, path("Value"), out));
        EXPECT_EQ(out, number);
        EXPECT_EQ(getNumber(user, path("Value"), 99), number);
    }
    expectStored("Value", REG_DWORD, 4);
}

TEST_F(Registry, NumberIsReadFromUpToFourBytesOfAnyType) {
    const struct {
        DWORD type;
        std::string bytes;
        std::optional<std::uint32_t> expected;
    } rows[] = {
        {REG_SZ, "abc\0"s, 0x00636261},
        {REG_BINARY, "\x01\x02\x03\x04", 0x04030201},
        {REG_BINARY, "\x01\x02\x03", 0x00030201},
        {REG_BINARY, "\xff", 0xFF},
        {REG_BINARY, "", 0},
        {REG_BINARY, "12345", {}},
        {REG_SZ, "abcd\0"s, {}},
    };
    for (const auto& [type, bytes, expected] : rows) {
        storeValue("Value", type, bytes);
        std::uint32_t out = 7;
        EXPECT_EQ(readNumber(user, path("Value"), out), expected.has_value()) << bytes;
        EXPECT_EQ(out, expected.value_or(7)) << bytes;
        EXPECT_EQ(getNumber(user, path("Value"), 99), expected.value_or(99)) << bytes;
    }
}

TEST_F(Registry, MissingValueOrKeyIsNeitherReadNorCreated) {
    const auto expectMissing = [this](const std::string& where) {
        std::string text = "old";
        std::uint32_t number = 7;
        EXPECT_FALSE(readString(user, where, text));
        EXPECT_FALSE(readBinary(user, where, text));
        EXPECT_FALSE(readNumber(user, where, number));
        EXPECT_FALSE(deleteValue(user, where));
        EXPECT_EQ(text, "old");
        EXPECT_EQ(number, 7U);
        EXPECT_EQ(getString(user, where), "");
        EXPECT_EQ(getNumber(user, where, 99), 99U);
    };
    expectMissing(path("Value"));
    EXPECT_FALSE(deleteKey(user, key_.path()));
    EXPECT_FALSE(exists(key_.path()));
    storeValue("Other", REG_SZ, "text\0"s);
    expectMissing(path("Value"));
    expectMissing(path(""));
}

TEST_F(Registry, PathIsSplitAtTheLastBackslash) {
    EXPECT_TRUE(writeNumber(user, path("Deeper\\Still\\Value"), 5));
    EXPECT_EQ(test::loadValue(user, path("Deeper\\Still"), "Value").bytes, "\x05\0\0\0"s);
    EXPECT_EQ(getNumber(user, path("Deeper\\Still\\Value"), 0), 5U);
    EXPECT_EQ(getNumber(user, path("Deeper\\Value"), 99), 99U);
}

TEST_F(Registry, PathWithoutAValueNameMeansTheDefaultValue) {
    EXPECT_TRUE(writeString(user, path(""), "default"));
    EXPECT_EQ(loadValue("").bytes.substr(0, 7), "default");
    EXPECT_EQ(getString(user, path("")), "default");
    EXPECT_TRUE(deleteValue(user, path("")));
    EXPECT_EQ(getString(user, path("")), "");

    RegistryKey key;
    ASSERT_EQ(RegOpenKeyExA(user, key_.path().c_str(), 0, KEY_ALL_ACCESS, key.receive()), ERROR_SUCCESS);
    EXPECT_TRUE(writeString(key.get(), "Sub", "default of Sub"));
    EXPECT_EQ(test::loadValue(user, path("Sub"), "").bytes.substr(0, 14), "default of Sub");
    EXPECT_EQ(getString(key.get(), "Sub"), "default of Sub");
    EXPECT_NE(loadValue("Sub").status, ERROR_SUCCESS) << "a value of that name exists";
}

TEST_F(Registry, NewKeysHaveTheirClass) {
    ASSERT_TRUE(writeNumber(user, path("Value"), 5));
    RegistryKey key;
    ASSERT_EQ(RegOpenKeyExA(user, key_.path().c_str(), 0, KEY_READ, key.receive()), ERROR_SUCCESS);
    char keyClass[100] = {};
    DWORD size = sizeof keyClass;
    ASSERT_EQ(RegQueryInfoKeyA(key.get(), keyClass, &size, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_STREQ(keyClass, "REG_SZ");
}

TEST_F(Registry, WriteFailsWhenTheKeyCannotBeCreated) {
    const std::string tooLong = path(std::string(300, 'k') + "\\Value");
    EXPECT_FALSE(writeString(user, tooLong, "text"));
    EXPECT_FALSE(writeNumber(user, tooLong, 1));
    EXPECT_FALSE(writeBinary(user, tooLong, "bytes"));
}

TEST_F(Registry, DeletingAValueKeepsTheOthers) {
    for (const char* name : {"Gone", "Kept"})
        storeValue(name, REG_SZ, "text\0"s);
    EXPECT_TRUE(deleteValue(user, path("Gone")));
    EXPECT_EQ(loadValue("Gone").status, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(loadValue("Kept").status, ERROR_SUCCESS);
}

TEST_F(Registry, DeletingAKeyDeletesItsSubkeys) {
    for (const char* end : {"", "\\"}) {
        ASSERT_TRUE(writeNumber(user, path("Outcomes\\1\\Error"), 1));
        ASSERT_TRUE(writeNumber(user, path("Outcomes\\2\\Deeper\\Error"), 1));
        EXPECT_TRUE(deleteKey(user, path("Outcomes") + end));
        EXPECT_FALSE(exists(path("Outcomes")));
        EXPECT_TRUE(exists(key_.path()));
        EXPECT_FALSE(deleteKey(user, path("Outcomes") + end));
    }
}

TEST_F(Registry, StoreAppendsAndRemovesPathParts) {
    const struct {
        const char *path, *name, *entered, *left;
    } rows[] = {{"Software\\x", "Value", "Software\\x\\Value", "Software\\x"},
                {"", "Software", "Software", ""},
                {"Software", "", "Software\\", "Software"},
                {"Software\\", "Value", "Software\\\\Value", "Software\\"}};
    for (const auto& row : rows) {
        RegistryStore store(user, row.path);
        EXPECT_EQ(store.root(), user);
        store.enter(row.name);
        EXPECT_EQ(store.path(), row.entered);
        store.leave(row.name);
        EXPECT_EQ(store.path(), row.left);
        store.leave("longer than the whole path");
        EXPECT_EQ(store.path(), "");
    }
}

TEST_F(Registry, StoreReadsAndWritesValuesAtItsPath) {
    RegistryStore store(user, path("State"));
    const std::string block(61, '\0');
    EXPECT_TRUE(store.writeBinaryHere(block));
    EXPECT_TRUE(store.writeNumber("WaitTime", 30));
    EXPECT_TRUE(store.writeString("Text", "text"));
    EXPECT_EQ(loadValue("State").bytes, block);
    EXPECT_EQ(getNumber(user, path("State\\WaitTime"), 0), 30U);
    EXPECT_EQ(getString(user, path("State\\Text")), "text");

    std::uint32_t number = 0;
    std::string text, bytes;
    EXPECT_TRUE(store.readNumber("WaitTime", number));
    EXPECT_TRUE(store.readString("Text", text));
    EXPECT_TRUE(store.readBinaryHere(bytes));
    EXPECT_FALSE(store.readNumber("Missing", number));
    EXPECT_FALSE(store.readString("Missing", text));
    EXPECT_EQ(number, 30U);
    EXPECT_EQ(text, "text");
    EXPECT_EQ(bytes, block);
    EXPECT_EQ(store.path(), path("State")) << "a call changed the path";
}

} // namespace
} // namespace base
