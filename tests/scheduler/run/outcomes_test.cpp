#include "lib/base/registry.h"
#include "scheduler/run/outcomes.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <new>
#include <string>

SCHEDULER_STAND_IN("advapi32.dll", RegQueryValueExA, "_RegQueryValueExA@24");

namespace scheduler {
namespace {

const std::string allOutcomes = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\";

/// Uses the program's real registry keys. This is safe because each test program has its own Wine prefix.
class Outcomes : public testing::Test {
protected:
    Outcomes() { base::deleteKey(HKEY_LOCAL_MACHINE, "SOFTWARE\\Brindlewood"); }

    static void leaveText(const std::string& value, const std::string& text) {
        ASSERT_TRUE(base::writeString(HKEY_LOCAL_MACHINE, allOutcomes + value, text));
    }
    static void leaveNumber(const std::string& value, std::uint32_t number) {
        ASSERT_TRUE(base::writeNumber(HKEY_LOCAL_MACHINE, allOutcomes + value, number));
    }
    static bool keyExists(const std::string& key) {
        HKEY opened = nullptr;
        return RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, &opened) == ERROR_SUCCESS &&
               RegCloseKey(opened) == ERROR_SUCCESS;
    }

    void expectOutcome(const std::string& number, const std::string& text, std::uint32_t error) {
        const RunOutcome outcome = source.take(static_cast<std::uint32_t>(std::stoul(number)));
        EXPECT_EQ(outcome.resultText, text);
        EXPECT_EQ(outcome.errorCode, error);
        EXPECT_FALSE(keyExists(allOutcomes + "Schedule" + number));
    }

    RegistryOutcomes source;
};

TEST_F(Outcomes, AreReadFromTheRunNumbersKeyWhichIsThenDeleted) {
    const std::string numbers[] = {"1", "120", "4294967295"};
    for (const std::string& number : numbers) {
        leaveText("Schedule" + number + "\\Result", number + " pages");
        leaveNumber("Schedule" + number + "\\Error", 5);
        leaveText("Schedule" + number + "\\Sub\\Sub\\Value", "x");
    }
    for (const std::string& number : numbers) {
        expectOutcome(number, number + " pages", 5);
        expectOutcome(number, "", 0);
    }
}

TEST_F(Outcomes, AreEmptyAndZeroWhenMissingOrOfAnotherType) {
    leaveText("Schedule4\\Result", "only a text");
    expectOutcome("4", "only a text", 0);
    leaveNumber("Schedule4\\Error", 0xFFFFFFFF);
    expectOutcome("4", "", 0xFFFFFFFF);
    leaveNumber("Schedule5\\Result", 0x41414141);
    leaveNumber("Schedule5\\Error", 1);
    expectOutcome("5", "", 1);
    leaveText("Schedule6\\Result", "text");
    leaveText("Schedule6\\Error", "seven");
    expectOutcome("6", "text", 0);
}

TEST_F(Outcomes, AreDeletedEvenIfReadingFails) {
    static std::string unreadable;
    platform::RegQueryValueExA.onCall = [](HKEY, LPCSTR name, auto...) {
        if (unreadable == name)
            throw std::bad_alloc();
    };
    for (const char* failing : {"Result", "Error"}) {
        leaveText("Schedule8\\Result", "of an earlier run");
        leaveNumber("Schedule8\\Error", 5);
        unreadable = failing;
        EXPECT_THROW(source.take(8), std::bad_alloc);
        unreadable.clear();
        expectOutcome("8", "", 0);
    }
    platform::RegQueryValueExA.onCall = nullptr;
}

TEST_F(Outcomes, DiscardingAllKeepsOtherKeys) {
    leaveText("Schedule1\\Result", "one");
    leaveText("Schedule700\\Result", "seven hundred");
    leaveText("Value", "x");
    base::writeString(HKEY_LOCAL_MACHINE, "SOFTWARE\\Brindlewood\\Other\\Value", "x");
    for (const char* time : {"first", "second"}) {
        RegistryOutcomes::discardAll();
        EXPECT_FALSE(keyExists(allOutcomes)) << time;
        EXPECT_TRUE(keyExists("SOFTWARE\\Brindlewood\\Other")) << time;
    }
}

} // namespace
} // namespace scheduler
