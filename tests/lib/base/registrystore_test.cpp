#include "lib/base/registry.h"
#include "lib/base/registrystore.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

namespace base {
namespace {

using test::StoredValue;

class RegistryStoreTest : public test::RegistryTest {};

TEST(RegistryStorePath, EnterAppendsAndLeaveRemoves) {
    RegistryStore store(HKEY_CURRENT_USER, "Software\\x");
    EXPECT_EQ(store.root(), HKEY_CURRENT_USER);
    EXPECT_EQ(store.path(), "Software\\x");
    store.enter("Value");
    EXPECT_EQ(store.path(), "Software\\x\\Value");
    store.enter("Inner");
    EXPECT_EQ(store.path(), "Software\\x\\Value\\Inner");
    store.leave("Inner");
    EXPECT_EQ(store.path(), "Software\\x\\Value");
    store.leave("Value");
    EXPECT_EQ(store.path(), "Software\\x");
}

TEST(RegistryStorePath, EmptyPathGetsNoBackslash) {
    RegistryStore store(HKEY_CURRENT_USER, "");
    store.enter("Software");
    EXPECT_EQ(store.path(), "Software");
    store.leave("Software");
    EXPECT_EQ(store.path(), "");
}

TEST(RegistryStorePath, EmptyNameIsEnteredAndLeft) {
    RegistryStore store(HKEY_CURRENT_USER, "Software");
    store.enter("");
    EXPECT_EQ(store.path(), "Software\\");
    store.leave("");
    EXPECT_EQ(store.path(), "Software");
}

TEST(RegistryStorePath, PathThatEndsInABackslashComesBack) {
    RegistryStore store(HKEY_CURRENT_USER, "Software\\");
    store.enter("Value");
    EXPECT_EQ(store.path(), "Software\\\\Value");
    store.leave("Value");
    EXPECT_EQ(store.path(), "Software\\");
}

TEST(RegistryStorePath, LeavingMoreThanThereIsGivesTheEmptyPath) {
    RegistryStore store(HKEY_CURRENT_USER, "x");
    store.leave("longer");
    EXPECT_EQ(store.path(), "");
}

TEST_F(RegistryStoreTest, StoreReadsAndWritesTheValuesOfItsPath) {
    RegistryStore store(HKEY_CURRENT_USER, path("State"));
    EXPECT_TRUE(store.writeNumber("WaitTime", 30));
    EXPECT_TRUE(store.writeString("Text", "text"));
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("State\\WaitTime"), 0), 30U);
    EXPECT_EQ(getString(HKEY_CURRENT_USER, path("State\\Text")), "text");

    std::uint32_t number = 0;
    std::string text;
    EXPECT_TRUE(store.readNumber("WaitTime", number));
    EXPECT_TRUE(store.readString("Text", text));
    EXPECT_EQ(number, 30U);
    EXPECT_EQ(text, "text");

    EXPECT_FALSE(store.readNumber("Missing", number));
    EXPECT_FALSE(store.readString("Missing", text));
    EXPECT_EQ(number, 30U);
    EXPECT_EQ(text, "text");
    EXPECT_EQ(store.path(), path("State")) << "each one leaves the path as it was";
}

TEST_F(RegistryStoreTest, StoresOwnPathAddressesAValueOfTheKeyAbove) {
    RegistryStore store(HKEY_CURRENT_USER, path("State"));
    const std::string block(61, '\0');
    EXPECT_TRUE(store.writeBinaryHere(block));
    const StoredValue value = loadValue("State");
    EXPECT_EQ(value.type, DWORD{REG_BINARY});
    EXPECT_EQ(value.bytes, block);
    std::string out;
    EXPECT_TRUE(store.readBinaryHere(out));
    EXPECT_EQ(out, block);
    // A subkey of the same name lives beside the value.
    EXPECT_TRUE(store.writeNumber("WaitTime", 30));
    EXPECT_TRUE(store.readBinaryHere(out));
    EXPECT_EQ(getNumber(HKEY_CURRENT_USER, path("State\\WaitTime"), 0), 30U);
}

} // namespace
} // namespace base
