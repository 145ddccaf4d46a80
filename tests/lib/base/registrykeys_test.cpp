#include "lib/base/registry.h"
#include "tests/support/handlecount.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

using namespace std::string_literals;
using test::RegistryTest;

TEST_F(RegistryTest, WhatIsMissingIsNotRead) {
    const auto expectMissing = [this](const std::string& where) {
        std::string text = "old";
        std::uint32_t number = 7;
        EXPECT_FALSE(readString(HKEY_CURRENT_USER, where, text));
        EXPECT_FALSE(readBinary(HKEY_CURRENT_USER, where, text));
        EXPECT_FALSE(readNumber(HKEY_CURRENT_USER, where, number));
        EXPECT_EQ(text, "old");
        EXPECT_EQ(number, 7U);
        EXPECT_EQ(getString(HKEY_CURRENT_USER, where), "");
        EXPECT_EQ(getNumber(HKEY_CURRENT_USER, where, 99), 99U);
    };
    expectMissing(path("Value"));
    EXPECT_NE(loadValue("Value").status, ERROR_SUCCESS) << "reading makes no key";
    storeValue("Other", REG_SZ, "text\0"s);
    expectMissing(path("Value"));
    expectMissing(path(""));
}

TEST_F(RegistryTest, PathEndingInABackslashNamesTheDefaultValue) {
    EXPECT_TRUE(writeString(HKEY_CURRENT_USER, key_.path() + "\\", "default"));
    EXPECT_EQ(loadValue("").bytes.substr(0, 7), "default");
    EXPECT_EQ(getString(HKEY_CURRENT_USER, key_.path() + "\\"), "default");
}

TEST_F(RegistryTest, PathWithoutBackslashNamesAKeyAndItsDefaultValue) {
    RegistryKey key;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, key_.path().c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              key.receive(), nullptr),
              ERROR_SUCCESS);
    EXPECT_TRUE(writeString(key.get(), "Sub", "default of Sub"));
    EXPECT_EQ(test::loadValue(HKEY_CURRENT_USER, key_.path() + "\\Sub", "").bytes.substr(0, 14),
              "default of Sub");
    EXPECT_EQ(getString(key.get(), "Sub"), "default of Sub");
    EXPECT_NE(loadValue("Sub").status, ERROR_SUCCESS) << "no value of that name";
}

TEST_F(RegistryTest, PathIsSplitAtItsLastBackslash) {
    EXPECT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Deeper\\Still\\Value"), 5));
    EXPECT_EQ(test::loadValue(HKEY_CURRENT_USER, key_.path() + "\\Deeper\\Still", "Value").bytes,
              "\x05\0\0\0"s);
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Deeper\\Still\\Value"), 0), 5U);
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("Deeper\\Value"), 99), 99U);
}

TEST_F(RegistryTest, KeysAreMadeWithTheirClass) {
    ASSERT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Value"), 5));
    RegistryKey key;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, key_.path().c_str(), 0, KEY_READ, key.receive()),
              ERROR_SUCCESS);
    char keyClass[100] = {};
    DWORD size = sizeof keyClass;
    ASSERT_EQ(RegQueryInfoKeyA(key.get(), keyClass, &size, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_STREQ(keyClass, "REG_SZ");
}

TEST_F(RegistryTest, WriteFailsWhereNoKeyCanBe) {
    RegistryKey readOnly;
    storeValue("Value", REG_SZ, "text\0"s);
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, key_.path().c_str(), 0, KEY_READ, readOnly.receive()),
              ERROR_SUCCESS);
    const HKEY closed = readOnly.get();
    readOnly.reset();
    EXPECT_FALSE(writeString(closed, "Sub\\Value", "text"));
    EXPECT_FALSE(writeNumber(closed, "Sub\\Value", 1));
    EXPECT_FALSE(writeBinary(closed, "Sub\\Value", "bytes"));
    EXPECT_FALSE(writeNumber(HKEY_CURRENT_USER, path(std::string(300, 'k') + "\\Value"), 1))
        << "a key's name has at most 255 characters";
}

TEST_F(RegistryTest, ValueIsDeletedAlone) {
    storeValue("Gone", REG_SZ, "text\0"s);
    storeValue("Kept", REG_SZ, "text\0"s);
    EXPECT_TRUE(deleteValue(HKEY_CURRENT_USER, path("Gone")));
    EXPECT_EQ(loadValue("Gone").status, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(loadValue("Kept").status, ERROR_SUCCESS);
    EXPECT_FALSE(deleteValue(HKEY_CURRENT_USER, path("Gone")));
    EXPECT_FALSE(deleteValue(HKEY_CURRENT_USER, path("Missing\\Value")));
    EXPECT_NE(test::loadValue(HKEY_CURRENT_USER, key_.path() + "\\Missing", "").status, ERROR_SUCCESS)
        << "deleting makes no key";
}

TEST_F(RegistryTest, DefaultValueIsDeleted) {
    ASSERT_TRUE(writeString(HKEY_CURRENT_USER, path(""), "default"));
    EXPECT_TRUE(deleteValue(HKEY_CURRENT_USER, path("")));
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("")), "");
}

TEST_F(RegistryTest, KeyIsDeletedWithAllBelowIt) {
    ASSERT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Outcomes\\Schedule1\\Error"), 1));
    ASSERT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Outcomes\\Schedule2\\Deeper\\Error"), 1));
    ASSERT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Outcomes\\Value"), 1));
    EXPECT_TRUE(deleteKey(HKEY_CURRENT_USER, path("Outcomes")));
    EXPECT_EQ(test::loadValue(HKEY_CURRENT_USER, path("Outcomes"), "Value").status, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(test::loadValue(HKEY_CURRENT_USER, path("Outcomes\\Schedule1"), "Error").status,
              ERROR_FILE_NOT_FOUND);
    RegistryKey above;
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, key_.path().c_str(), 0, KEY_READ, above.receive()),
              ERROR_SUCCESS);
}

TEST_F(RegistryTest, KeyIsDeletedByAPathEndingInABackslash) {
    ASSERT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Outcomes\\Schedule1\\Error"), 1));
    EXPECT_TRUE(deleteKey(HKEY_CURRENT_USER, path("Outcomes\\Schedule1\\")));
    EXPECT_EQ(test::loadValue(HKEY_CURRENT_USER, path("Outcomes\\Schedule1"), "Error").status,
              ERROR_FILE_NOT_FOUND);
    RegistryKey above;
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, path("Outcomes").c_str(), 0, KEY_READ, above.receive()),
              ERROR_SUCCESS);
}

TEST_F(RegistryTest, DeletingAKeyThatDoesNotExistFails) {
    EXPECT_FALSE(deleteKey(HKEY_CURRENT_USER, path("Missing")));
}

TEST_F(RegistryTest, NoHandleIsLost) {
    storeValue("Text", REG_SZ, "text\0"s);
    storeValue("Number", REG_DWORD, "1234"s);
    storeValue("Large", REG_BINARY, "123456789"s);
    const auto useAll = [this] {
        std::string text;
        std::uint32_t number = 0;
        for (const char* name : {"Text", "Number", "Large", "Missing", "", "Missing\\Value"}) {
            readString(HKEY_CURRENT_USER, path(name), text);
            readNumber(HKEY_CURRENT_USER, path(name), number);
            readBinary(HKEY_CURRENT_USER, path(name), text);
            deleteValue(HKEY_CURRENT_USER, path("Missing"));
        }
        writeString(HKEY_CURRENT_USER, path("Text"), "text");
        writeNumber(HKEY_CURRENT_USER, path("Number"), 1);
        writeBinary(HKEY_CURRENT_USER, path("Binary"), "bytes");
        deleteValue(HKEY_CURRENT_USER, path("Binary"));
        writeNumber(HKEY_CURRENT_USER, path("Sub\\Number"), 1);
        deleteKey(HKEY_CURRENT_USER, path("Sub"));
    };
    useAll(); // the platform keeps handles of the predefined keys
    const unsigned before = test::handleCount();
    for (int i = 0; i < 10; ++i)
        useAll();
    EXPECT_EQ(test::handleCount(), before);
}

} // namespace
} // namespace base
