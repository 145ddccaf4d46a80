// What the registry's functions ask the platform for: a user may have no right to more.
#include "lib/base/registry.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/registrykey.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace {

enum class Call : std::uint8_t { Open, Create };

std::vector<std::pair<Call, REGSAM>> calls; ///< and the access that each asked for

LSTATUS WINAPI notedOpen(HKEY root, LPCSTR subkey, DWORD options, REGSAM access, PHKEY key) {
    static const auto original =
        test::platformFunction<decltype(&RegOpenKeyExA)>("advapi32.dll", "RegOpenKeyExA");
    calls.emplace_back(Call::Open, access);
    return original(root, subkey, options, access, key);
}

LSTATUS WINAPI notedCreate(HKEY root, LPCSTR subkey, DWORD reserved, LPSTR keyClass, DWORD options,
                           REGSAM access, const LPSECURITY_ATTRIBUTES security, PHKEY key,
                           LPDWORD disposition) {
    static const auto original =
        test::platformFunction<decltype(&RegCreateKeyExA)>("advapi32.dll", "RegCreateKeyExA");
    calls.emplace_back(Call::Create, access);
    return original(root, subkey, reserved, keyClass, options, access, security, key, disposition);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(RegOpenKeyExA, "_RegOpenKeyExA@20", notedOpen);
SCHEDULER_REPLACE_IMPORT(RegCreateKeyExA, "_RegCreateKeyExA@36", notedCreate);

namespace base {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

class RegistryAccess : public test::RegistryTest {
protected:
    RegistryAccess() {
        storeValue("Text", REG_SZ, "text");
        storeValue("Number", REG_DWORD, "1234");
        storeValue("Bytes", REG_BINARY, "bytes");
        calls.clear();
    }
};

TEST_F(RegistryAccess, AReadOnlyAsksForValues) {
    std::string text;
    std::uint32_t number = 0;
    EXPECT_TRUE(readString(HKEY_CURRENT_USER, path("Text"), text));
    EXPECT_TRUE(readNumber(HKEY_CURRENT_USER, path("Number"), number));
    EXPECT_TRUE(readBinary(HKEY_CURRENT_USER, path("Bytes"), text));
    EXPECT_THAT(calls, SizeIs(3));
    EXPECT_THAT(calls, Each(Pair(Call::Open, REGSAM{KEY_QUERY_VALUE})));
}

TEST_F(RegistryAccess, AWriteAsksForReadingAndWriting) {
    EXPECT_TRUE(writeString(HKEY_CURRENT_USER, path("Text"), "new"));
    EXPECT_TRUE(writeNumber(HKEY_CURRENT_USER, path("Number"), 1));
    EXPECT_TRUE(writeBinary(HKEY_CURRENT_USER, path("Bytes"), "new"));
    EXPECT_THAT(calls, SizeIs(3));
    EXPECT_THAT(calls, Each(Pair(Call::Create, REGSAM{0x2001F})));
}

TEST_F(RegistryAccess, ADeletionOnlyAsksForSettingValues) {
    EXPECT_TRUE(deleteValue(HKEY_CURRENT_USER, path("Text")));
    EXPECT_THAT(calls, ElementsAre(Pair(Call::Open, REGSAM{KEY_SET_VALUE})));
}

} // namespace
} // namespace base
