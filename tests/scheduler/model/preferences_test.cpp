#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/registry.h"
#include "lib/base/registrystore.h"
#include "scheduler/model/preferences.h"
#include "tests/support/importedfunctions.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

using base::RegistryStore;
using scheduler::loadPreferences;
using scheduler::Preferences;
using scheduler::savePreferences;

/// The one value that cannot be written; empty: all can.
std::string refusedValue;

std::vector<std::string> read;
std::vector<std::string> written;

LSTATUS WINAPI noticedSetValue(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                               DWORD size) {
    static const auto platform =
        test::platformFunction<decltype(&RegSetValueExA)>("advapi32.dll", "RegSetValueExA");
    written.emplace_back(name);
    return refusedValue == name ? ERROR_ACCESS_DENIED : platform(key, name, reserved, type, data, size);
}
SCHEDULER_REPLACE_IMPORT(RegSetValueExA, "_RegSetValueExA@24", noticedSetValue);

LSTATUS WINAPI noticedQueryValue(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                 LPDWORD size) {
    static const auto platform =
        test::platformFunction<decltype(&RegQueryValueExA)>("advapi32.dll", "RegQueryValueExA");
    // A text or a block is asked for its size first.
    if (read.empty() || read.back() != name)
        read.emplace_back(name);
    return platform(key, name, reserved, type, data, size);
}
SCHEDULER_REPLACE_IMPORT(RegQueryValueExA, "_RegQueryValueExA@24", noticedQueryValue);

const std::string testKey = "Software\\Brindlewood\\preferences_test";

Preferences filledPreferences() {
    Preferences preferences;
    preferences.suspended = true;
    preferences.waitTime = 0xF1F2F3F4;
    preferences.runMultiple = true;
    preferences.autostart = false;
    for (std::size_t i = 0; i < preferences.windowState.size(); ++i)
        preferences.windowState[i] = static_cast<std::byte>(i * 5); // zeros and high bytes within
    return preferences;
}

constexpr const char* valueNames[] = {"State", "Suspended", "WaitTime", "RunMultiple", "Autostart"};

/// The filled preferences with the default in what is stored under one of the names.
Preferences filledBut(const std::string& name) {
    const Preferences defaults;
    Preferences preferences = filledPreferences();
    if (name == "State")
        preferences.windowState = defaults.windowState;
    else if (name == "Suspended")
        preferences.suspended = defaults.suspended;
    else if (name == "WaitTime")
        preferences.waitTime = defaults.waitTime;
    else if (name == "RunMultiple")
        preferences.runMultiple = defaults.runMultiple;
    else
        preferences.autostart = defaults.autostart;
    return preferences;
}

void expectEqual(const Preferences& actual, const Preferences& expected) {
    EXPECT_EQ(actual.suspended, expected.suspended);
    EXPECT_EQ(actual.waitTime, expected.waitTime);
    EXPECT_EQ(actual.runMultiple, expected.runMultiple);
    EXPECT_EQ(actual.autostart, expected.autostart);
    EXPECT_EQ(actual.windowState, expected.windowState);
}

class PreferencesTest : public testing::Test {
protected:
    ~PreferencesTest() override { base::deleteKey(HKEY_CURRENT_USER, testKey); }

    std::string value(const std::string& name) const { return testKey + "\\State\\" + name; }
    void put(const std::string& name, std::uint32_t number) const {
        ASSERT_TRUE(base::writeNumber(HKEY_CURRENT_USER, value(name), number));
    }
    DWORD typeOf(const std::string& subkey, const char* name) const {
        DWORD type = REG_NONE;
        RegGetValueA(HKEY_CURRENT_USER, subkey.c_str(), name, RRF_RT_ANY, &type, nullptr, nullptr);
        return type;
    }

    RegistryStore store{HKEY_CURRENT_USER, testKey + "\\State"};
};

TEST_F(PreferencesTest, HaveAKeyNamedAfterTheMakerAndTheProgramsOwnFile) {
    std::string program = base::baseNameOf(base::executablePath());
    std::ranges::transform(program, program.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    const RegistryStore own = scheduler::appRegistryKey("State");
    EXPECT_EQ(own.root(), HKEY_CURRENT_USER);
    EXPECT_EQ(own.path(), "Software\\Brindlewood\\" + program + "\\State");
    EXPECT_EQ(scheduler::appRegistryKey("Other section").path(),
              "Software\\Brindlewood\\" + program + "\\Other section");
}

/// Runs a copy of this program under another name; its exit code is that of the test it runs.
DWORD runRenamed(const std::string& name, const std::string& test) {
    const std::string copy = base::directoryOf(base::executablePath()) + name;
    EXPECT_TRUE(CopyFileA(base::executablePath().c_str(), copy.c_str(), FALSE));
    std::string commandLine = "\"" + copy + "\" --gtest_also_run_disabled_tests --gtest_filter=" + test;
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof(startupInfo);
    PROCESS_INFORMATION process{};
    DWORD exitCode = 99;
    if (CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startupInfo, &process)) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &exitCode);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    DeleteFileA(copy.c_str());
    return exitCode;
}

/// Run by the test below, in a copy of this program.
TEST(RenamedProgram, DISABLED_StartsWithDefaultsUnderItsOwnKey) {
    RegistryStore store = scheduler::appRegistryKey(scheduler::stateSection);
    EXPECT_EQ(store.path(), "Software\\Brindlewood\\my copy.of it\\State");
    Preferences preferences;
    EXPECT_FALSE(loadPreferences(store, preferences));
    expectEqual(preferences, Preferences());
}

TEST_F(PreferencesTest, HaveTheirDefaultsInARenamedProgramUnderItsNameInSmallLetters) {
    RegistryStore own = scheduler::appRegistryKey(scheduler::stateSection);
    ASSERT_TRUE(savePreferences(own, filledPreferences()));
    EXPECT_EQ(runRenamed("My COPY.of it.exe", "RenamedProgram.*"), 0u);

    Preferences preferences;
    EXPECT_TRUE(loadPreferences(own, preferences));
    expectEqual(preferences, filledPreferences());
    base::deleteKey(HKEY_CURRENT_USER, base::directoryOf(own.path()));
}

TEST_F(PreferencesTest, HaveTheirDefaultsAtAFirstStart) {
    Preferences preferences;
    EXPECT_FALSE(loadPreferences(store, preferences));
    EXPECT_FALSE(preferences.suspended);
    EXPECT_EQ(preferences.waitTime, 20u);
    EXPECT_FALSE(preferences.runMultiple);
    EXPECT_TRUE(preferences.autostart);
    EXPECT_EQ(preferences.windowState, base::WindowState{});
}

TEST_F(PreferencesTest, ComeBackAsTheyWereSaved) {
    for (const Preferences& saved : {filledPreferences(), Preferences()}) {
        EXPECT_TRUE(savePreferences(store, saved));
        Preferences preferences;
        EXPECT_TRUE(loadPreferences(store, preferences));
        expectEqual(preferences, saved);
        EXPECT_EQ(store.path(), testKey + "\\State") << "the store is left as it was";
    }
}

TEST_F(PreferencesTest, AreSavedAndLoadedInTheirOrder) {
    const auto inOrder = testing::ElementsAreArray(valueNames);
    written.clear();
    EXPECT_TRUE(savePreferences(store, filledPreferences()));
    EXPECT_THAT(written, inOrder);
    read.clear();
    Preferences preferences;
    EXPECT_TRUE(loadPreferences(store, preferences));
    EXPECT_THAT(read, inOrder);
}

TEST_F(PreferencesTest, KeepTheSettingOfAMissingValueAndOfNoOther) {
    for (const std::string missing : valueNames) {
        ASSERT_TRUE(savePreferences(store, filledPreferences()));
        ASSERT_TRUE(
            base::deleteValue(HKEY_CURRENT_USER, missing == "State" ? testKey + "\\State" : value(missing)));
        Preferences preferences;
        EXPECT_FALSE(loadPreferences(store, preferences)) << missing;
        expectEqual(preferences, filledBut(missing));
    }
}

TEST_F(PreferencesTest, TakeAnyFlagButZeroAsSetAndWriteItBackAsOne) {
    ASSERT_TRUE(savePreferences(store, Preferences()));
    for (const std::uint32_t number : {1u, 2u, 0x100u, 0xFFFFFFFFu}) {
        for (const char* name : {"Suspended", "RunMultiple", "Autostart"})
            put(name, number);
        Preferences preferences;
        preferences.autostart = false;
        EXPECT_TRUE(loadPreferences(store, preferences));
        EXPECT_TRUE(preferences.suspended && preferences.runMultiple && preferences.autostart) << number;
        EXPECT_TRUE(savePreferences(store, preferences));
        for (const char* name : {"Suspended", "RunMultiple", "Autostart"})
            EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, value(name), 99), 1u) << name << " " << number;
    }
}

TEST_F(PreferencesTest, TakeAnyWaitTimeAsItIsRead) {
    ASSERT_TRUE(savePreferences(store, Preferences()));
    for (const std::uint32_t minutes : {0u, 1440u, 1441u, 0xFFFFFFFFu}) {
        put("WaitTime", minutes);
        Preferences preferences;
        EXPECT_TRUE(loadPreferences(store, preferences));
        EXPECT_EQ(preferences.waitTime, minutes);
    }
}

TEST_F(PreferencesTest, TakeAWindowStateThatIsLongEnoughAndBinaryOnly) {
    for (const std::size_t size : {1U, 60U, 61U, 70U}) {
        ASSERT_TRUE(savePreferences(store, filledPreferences()));
        ASSERT_TRUE(base::writeBinary(HKEY_CURRENT_USER, testKey + "\\State", std::string(size, 'w')));
        Preferences preferences;
        EXPECT_EQ(loadPreferences(store, preferences), size >= 61) << size;
        Preferences expected = filledPreferences();
        expected.windowState.fill(size >= 61 ? std::byte{'w'} : std::byte{0});
        expectEqual(preferences, expected);
    }
    ASSERT_TRUE(base::writeString(HKEY_CURRENT_USER, testKey + "\\State", std::string(61, 's')));
    Preferences preferences;
    EXPECT_FALSE(loadPreferences(store, preferences));
    expectEqual(preferences, filledBut("State"));
}

TEST_F(PreferencesTest, AreABlockAboveTheSectionAndNumbersWithinIt) {
    const Preferences preferences = filledPreferences();
    EXPECT_TRUE(savePreferences(store, preferences));
    EXPECT_EQ(typeOf(testKey, "State"), DWORD{REG_BINARY});
    std::string bytes;
    EXPECT_TRUE(base::readBinary(HKEY_CURRENT_USER, testKey + "\\State", bytes));
    ASSERT_EQ(bytes.size(), 61u);
    EXPECT_EQ(std::memcmp(bytes.data(), preferences.windowState.data(), bytes.size()), 0);
    struct Row {
        const char* name;
        std::uint32_t number;
    };
    for (const Row& row :
         {Row{"Suspended", 1}, Row{"WaitTime", 0xF1F2F3F4}, Row{"RunMultiple", 1}, Row{"Autostart", 0}}) {
        EXPECT_EQ(typeOf(testKey + "\\State", row.name), DWORD{REG_DWORD}) << row.name;
        EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, value(row.name), 99), row.number) << row.name;
    }
}

TEST_F(PreferencesTest, AreWrittenButForTheOneThatCannotBeWhichIsAFailure) {
    for (const char* refused : valueNames) {
        ASSERT_TRUE(savePreferences(store, Preferences()));
        refusedValue = refused;
        EXPECT_FALSE(savePreferences(store, filledPreferences())) << refused;
        refusedValue.clear();
        Preferences stored;
        EXPECT_TRUE(loadPreferences(store, stored));
        expectEqual(stored, filledBut(refused));
    }
}

TEST_F(PreferencesTest, AreNeitherSavedNorLoadedWithoutAKey) {
    RegistryStore nowhere(nullptr, testKey + "\\State");
    EXPECT_FALSE(savePreferences(nowhere, Preferences()));
    Preferences preferences = filledPreferences();
    EXPECT_FALSE(loadPreferences(nowhere, preferences));
    expectEqual(preferences, filledPreferences());
}

} // namespace
