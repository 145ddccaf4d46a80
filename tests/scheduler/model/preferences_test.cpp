#include "lib/base/registry.h"
#include "lib/base/registrystore.h"
#include "scheduler/model/preferences.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/registrykey.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <tuple>
#include <vector>

namespace {

DWORD WINAPI renamedProgram(HMODULE, LPSTR buffer, DWORD) {
    constexpr char path[] = "C:\\My.Files\\My COPY.of it.exe";
    std::strcpy(buffer, path);
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
using testing::ElementsAreArray;

const HKEY user = HKEY_CURRENT_USER;
constexpr const char* valueNames[] = {"State", "Suspended", "WaitTime", "RunMultiple", "Autostart"};
std::vector<std::string> read, written;
std::string refusedValue;

auto fieldsOf(const Preferences& preferences) {
    return std::tuple(preferences.suspended, preferences.waitTime, preferences.runMultiple,
                      preferences.autostart, preferences.windowState);
}

Preferences filledPreferences() {
    Preferences preferences;
    preferences.suspended = true;
    preferences.waitTime = 0xF1F2F3F4;
    preferences.runMultiple = true;
    preferences.autostart = false;
    for (std::size_t i = 0; i < preferences.windowState.size(); ++i)
        preferences.windowState[i] = static_cast<std::byte>(i * 5); // includes zeros and high bytes
    return preferences;
}

Preferences filledBut(const std::string& name) {
    Preferences preferences = filledPreferences();
    if (name == "State")
        preferences.windowState = {};
    else if (name == "Suspended")
        preferences.suspended = false;
    else if (name == "WaitTime")
        preferences.waitTime = 20;
    else if (name == "RunMultiple")
        preferences.runMultiple = false;
    else
        preferences.autostart = true;
    return preferences;
}

class PreferenceValues : public test::RegistryTest {
protected:
    std::string value(const std::string& name) const { return path("State\\" + name); }
    void expectLoaded(bool whole, const Preferences& expected) {
        Preferences preferences;
        EXPECT_EQ(loadPreferences(store, preferences), whole);
        EXPECT_EQ(fieldsOf(preferences), fieldsOf(expected));
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
    EXPECT_EQ(fieldsOf(preferences), std::tuple(false, 20U, false, true, base::WindowState{}));
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
        EXPECT_THAT(written, ElementsAreArray(valueNames));
        EXPECT_THAT(read, ElementsAreArray(valueNames));
    }
    platform::RegSetValueExA.onCall = nullptr;
    platform::RegQueryValueExA.onCall = nullptr;
}

TEST_F(PreferenceValues, KeepOnlyTheSettingOfAMissingValue) {
    for (const std::string missing : valueNames) {
        ASSERT_TRUE(savePreferences(store, filledPreferences()));
        ASSERT_TRUE(base::deleteValue(user, missing == "State" ? path("State") : value(missing)));
        expectLoaded(false, filledBut(missing));
    }
}

TEST_F(PreferenceValues, ReadAnyNonzeroFlagAsSetAndWriteItAsOne) {
    ASSERT_TRUE(savePreferences(store, Preferences()));
    for (const std::uint32_t number : {1U, 2U, 0x100U, 0xFFFFFFFFU}) {
        for (const char* name : {"Suspended", "RunMultiple", "Autostart"})
            ASSERT_TRUE(base::writeNumber(user, value(name), number));
        Preferences preferences;
        preferences.autostart = false;
        EXPECT_TRUE(loadPreferences(store, preferences));
        EXPECT_TRUE(preferences.suspended && preferences.runMultiple && preferences.autostart) << number;
        EXPECT_TRUE(savePreferences(store, preferences));
        for (const char* name : {"Suspended", "RunMultiple", "Autostart"})
            EXPECT_EQ(base::getNumber(user, value(name), 99), 1U) << name << " " << number;
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
    const Preferences preferences = filledPreferences();
    EXPECT_TRUE(savePreferences(store, preferences));
    const test::StoredValue state = loadValue("State");
    EXPECT_EQ(state.type, DWORD{REG_BINARY});
    ASSERT_EQ(state.bytes.size(), 61U);
    EXPECT_EQ(std::memcmp(state.bytes.data(), preferences.windowState.data(), 61), 0);
    const struct {
        const char* name;
        std::string bytes;
    } rows[] = {{"Suspended", {1, 0, 0, 0}},
                {"WaitTime", "\xF4\xF3\xF2\xF1"},
                {"RunMultiple", {1, 0, 0, 0}},
                {"Autostart", {0, 0, 0, 0}}};
    for (const auto& [name, bytes] : rows) {
        const test::StoredValue number = test::loadValue(user, path("State"), name);
        EXPECT_EQ(number.type, DWORD{REG_DWORD}) << name;
        EXPECT_EQ(number.bytes, bytes) << name;
    }
}

TEST_F(PreferenceValues, WriteTheOthersAndFailWhenOneIsRefused) {
    platform::RegSetValueExA.onCall = [](HKEY, LPCSTR name, auto...) {
        platform::RegSetValueExA.answer.reset();
        if (refusedValue == name)
            platform::RegSetValueExA.answer = ERROR_ACCESS_DENIED;
    };
    for (const char* refused : valueNames) {
        refusedValue.clear();
        ASSERT_TRUE(savePreferences(store, Preferences()));
        refusedValue = refused;
        EXPECT_FALSE(savePreferences(store, filledPreferences())) << refused;
        expectLoaded(true, filledBut(refused));
    }
    platform::RegSetValueExA.onCall = nullptr;
    platform::RegSetValueExA.answer.reset();
}

TEST_F(PreferenceValues, AreNeitherSavedNorLoadedWithoutAKey) {
    base::RegistryStore nowhere(nullptr, path("State"));
    EXPECT_FALSE(savePreferences(nowhere, Preferences()));
    Preferences preferences = filledPreferences();
    EXPECT_FALSE(loadPreferences(nowhere, preferences));
    EXPECT_EQ(fieldsOf(preferences), fieldsOf(filledPreferences()));
}

} // namespace
