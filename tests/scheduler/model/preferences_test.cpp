#include "lib/base/registry.h"
#include "lib/base/registrystore.h"
#include "scheduler/model/preferences.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/registrykey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace {

DWORD WINAPI renamedProgram(HMODULE, LPSTR buffer, DWORD) {
    constexpr char path[] = "C:\\My.Files\\My COPY.of it.exe";
    std::ranges::copy(path, buffer);
    return sizeof path - 1;
}

} // namespace

SCHEDULER_STAND_IN("advapi32.dll", RegSetValueExA, "_RegSetValueExA@24");
SCHEDULER_STAND_IN("advapi32.dll", RegQueryValueExA, "_RegQueryValueExA@24");
SCHEDULER_REPLACE_IMPORT(GetModuleFileNameA, "_GetModuleFileNameA@12", renamedProgram);

namespace {

using scheduler::loadPreferences;
using scheduler::Preferences;
using scheduler::savePreferences;
using testing::PrintToString;

const HKEY user = HKEY_CURRENT_USER;
std::vector<std::string> read, written;
std::string refusedValue;

const std::string on{1, 0, 0, 0}, off{0, 0, 0, 0};
const std::string filledState = [] {
    std::string bytes;
    for (int i = 0; i < 61; ++i)
        bytes += static_cast<char>(i * 5); // includes zeros and high bytes
    return bytes;
}();

/// In the order of the registry accesses, with the bytes that the registry holds by default and after fill().
const struct Setting {
    std::string name;
    void (*fill)(Preferences& preferences);
    std::string defaultBytes, filledBytes;
} settings[] = {{"State", [](auto& to) { std::memcpy(to.windowState.data(), filledState.data(), 61); },
                 std::string(61, '\0'), filledState},
                {"Suspended", [](auto& to) { to.suspended = true; }, off, on},
                {"WaitTime", [](auto& to) { to.waitTime = 0xF1F2F3F4; }, {20, 0, 0, 0}, "\xF4\xF3\xF2\xF1"},
                {"RunMultiple", [](auto& to) { to.runMultiple = true; }, off, on},
                {"Autostart", [](auto& to) { to.autostart = false; }, on, off}};

Preferences filledBut(const std::string& name) {
    Preferences preferences;
    for (const Setting& setting : settings)
        if (setting.name != name)
            setting.fill(preferences);
    return preferences;
}

Preferences filledPreferences() {
    return filledBut("");
}

class PreferenceValues : public test::RegistryTest {
protected:
    std::string value(const std::string& name) const {
        return path(name == "State" ? name : "State\\" + name);
    }
    void expectStored(std::string Setting::*bytes) const {
        for (const Setting& setting : settings) {
            const bool isState = setting.name == "State";
            const test::StoredValue stored =
                test::loadValue(user, isState ? key_.path() : path("State"), setting.name.c_str());
            EXPECT_EQ(stored.type, isState ? DWORD{REG_BINARY} : DWORD{REG_DWORD}) << setting.name;
            EXPECT_EQ(stored.bytes, setting.*bytes) << setting.name;
        }
    }
    void expectLoaded(bool whole, const Preferences& expected) {
        Preferences preferences;
        EXPECT_EQ(loadPreferences(store, preferences), whole);
        EXPECT_EQ(preferences, expected);
        EXPECT_EQ(store.path(), path("State")) << "the path of the store must not change";
    }

    base::RegistryStore store{user, path("State")};
};

TEST_F(PreferenceValues, AreStoredUnderTheProgramsFileNameInLowerCase) {
    const base::RegistryStore own = scheduler::appRegistryKey("Other section");
    EXPECT_EQ(own.root(), user);
    EXPECT_EQ(own.path(), "Software\\Brindlewood\\my copy.of it\\Other section");
}

TEST_F(PreferenceValues, HaveDefaultsAtTheFirstStart) {
    Preferences preferences;
    EXPECT_FALSE(loadPreferences(store, preferences));
    EXPECT_TRUE(savePreferences(store, preferences));
    expectStored(&Setting::defaultBytes);
}

TEST_F(PreferenceValues, RoundTripInTheirOrder) {
    platform::RegSetValueExA.onCall = [](HKEY, LPCSTR name, auto...) { written.emplace_back(name); };
    platform::RegQueryValueExA.onCall = [](HKEY, LPCSTR name, auto...) {
        if (read.empty() || read.back() != name) // the size of a block is queried first
            read.emplace_back(name);
    };
    for (const Preferences& saved : {filledPreferences(), Preferences()}) {
        read.clear();
        written.clear();
        EXPECT_TRUE(savePreferences(store, saved));
        expectLoaded(true, saved);
        EXPECT_TRUE(std::ranges::equal(written, settings, {}, {}, &Setting::name)) << PrintToString(written);
        EXPECT_TRUE(std::ranges::equal(read, settings, {}, {}, &Setting::name)) << PrintToString(read);
    }
    platform::RegSetValueExA.onCall = nullptr;
    platform::RegQueryValueExA.onCall = nullptr;
}

TEST_F(PreferenceValues, KeepOnlyTheSettingOfAMissingValue) {
    for (const Setting& missing : settings) {
        ASSERT_TRUE(savePreferences(store, filledPreferences()));
        ASSERT_TRUE(base::deleteValue(user, value(missing.name)));
        expectLoaded(false, filledBut(missing.name));
    }
}

TEST_F(PreferenceValues, ReadAnyNonzeroFlagAsSetAndWriteItAsOne) {
    for (const Setting& setting : settings) {
        if (setting.filledBytes != on && setting.filledBytes != off)
            continue; // not a flag
        for (const std::uint32_t number : {1U, 2U, 0x100U, 0xFFFFFFFFU}) {
            ASSERT_TRUE(savePreferences(store, Preferences()));
            ASSERT_TRUE(base::writeNumber(user, value(setting.name), number));
            Preferences preferences;
            preferences.autostart = false; // unset, like the other flags
            EXPECT_TRUE(loadPreferences(store, preferences));
            EXPECT_TRUE(savePreferences(store, preferences));
            EXPECT_EQ(base::getNumber(user, value(setting.name), 99), 1U) << setting.name << " " << number;
        }
    }
}

TEST_F(PreferenceValues, AcceptOnlyABinaryWindowStateOfSufficientLength) {
    for (const std::size_t size : {1U, 60U, 61U, 70U}) {
        ASSERT_TRUE(savePreferences(store, filledPreferences()));
        ASSERT_TRUE(base::writeBinary(user, path("State"), std::string(size, 'w')));
        Preferences expected = filledPreferences();
        expected.windowState.fill(size >= 61 ? std::byte{'w'} : std::byte{0});
        expectLoaded(size >= 61, expected);
    }
    ASSERT_TRUE(base::writeString(user, path("State"), std::string(61, 's')));
    expectLoaded(false, filledBut("State"));
}

TEST_F(PreferenceValues, StoreTheWindowStateAboveTheSectionAndNumbersInIt) {
    EXPECT_TRUE(savePreferences(store, filledPreferences()));
    expectStored(&Setting::filledBytes);
}

TEST_F(PreferenceValues, WriteTheOthersAndFailWhenOneIsRefused) {
    platform::RegSetValueExA.onCall = [](HKEY, LPCSTR name, auto...) {
        platform::RegSetValueExA.answer.reset();
        if (refusedValue == name)
            platform::RegSetValueExA.answer = ERROR_ACCESS_DENIED;
    };
    for (const Setting& refused : settings) {
        refusedValue.clear();
        ASSERT_TRUE(savePreferences(store, Preferences()));
        refusedValue = refused.name;
        EXPECT_FALSE(savePreferences(store, filledPreferences())) << refused.name;
        expectLoaded(true, filledBut(refused.name));
    }
    platform::RegSetValueExA.onCall = nullptr;
    platform::RegSetValueExA.answer.reset();
}

TEST_F(PreferenceValues, AreNeitherSavedNorLoadedWithoutAKey) {
    base::RegistryStore nowhere(nullptr, path("State"));
    EXPECT_FALSE(savePreferences(nowhere, Preferences()));
    Preferences preferences = filledPreferences();
    EXPECT_FALSE(loadPreferences(nowhere, preferences));
    EXPECT_EQ(preferences, filledPreferences());
}

} // namespace
