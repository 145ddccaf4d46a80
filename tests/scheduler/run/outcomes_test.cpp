#include "lib/base/handles.h"
#include "lib/base/registry.h"
#include "scheduler/run/outcomes.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>

namespace {

std::function<void(const std::string& value)> beforeReading;

LSTATUS WINAPI observedQueryValue(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                  LPDWORD size) {
    static const auto original =
        test::platformFunction<decltype(&RegQueryValueExA)>("advapi32.dll", "RegQueryValueExA");
    if (beforeReading)
        beforeReading(name);
    return original(key, name, reserved, type, data, size);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(RegQueryValueExA, "_RegQueryValueExA@24", observedQueryValue);

namespace scheduler {
namespace {

const std::string allOutcomes = "SOFTWARE\\Brindlewood\\Corvane Scheduler";

bool keyExists(const std::string& key) {
    base::RegistryKey opened;
    return RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_QUERY_VALUE, opened.receive()) ==
           ERROR_SUCCESS;
}

/// Works on the keys that the program uses, in a Windows that belongs to this test program alone.
class OutcomesTest : public testing::Test {
protected:
    OutcomesTest() { base::deleteKey(HKEY_LOCAL_MACHINE, "SOFTWARE\\Brindlewood"); }

    static std::string pathOf(std::uint32_t runNumber, const std::string& name) {
        return allOutcomes + "\\Schedule" + std::to_string(runNumber) + '\\' + name;
    }
    static void leaveText(std::uint32_t runNumber, const std::string& name, const std::string& text) {
        ASSERT_TRUE(base::writeString(HKEY_LOCAL_MACHINE, pathOf(runNumber, name), text));
    }
    static void leaveNumber(std::uint32_t runNumber, const std::string& name, std::uint32_t number) {
        ASSERT_TRUE(base::writeNumber(HKEY_LOCAL_MACHINE, pathOf(runNumber, name), number));
    }

    void expectOutcome(std::uint32_t runNumber, const std::string& text, std::uint32_t error) {
        const RunOutcome outcome = source.take(runNumber);
        EXPECT_EQ(outcome.resultText, text);
        EXPECT_EQ(outcome.errorCode, error);
        EXPECT_FALSE(keyExists(allOutcomes + "\\Schedule" + std::to_string(runNumber)));
    }

    RegistryOutcomes source;
};

TEST_F(OutcomesTest, KeyIsNamedAfterTheRunNumberInDecimal) {
    EXPECT_EQ(outcomeKey(1), "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule1\\");
    EXPECT_EQ(outcomeKey(120), "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule120\\");
    EXPECT_EQ(outcomeKey(0xFFFFFFFF), "SOFTWARE\\Brindlewood\\Corvane Scheduler\\Schedule4294967295\\");
}

TEST_F(OutcomesTest, ResultAndErrorAreReadAndTheKeyIsGone) {
    leaveText(1, "Result", "12 pages");
    leaveNumber(1, "Error", 5);
    expectOutcome(1, "12 pages", 5);
    expectOutcome(1, "", 0);
}

TEST_F(OutcomesTest, KeyGoesWithAllItsContents) {
    leaveText(2, "Result", "");
    leaveText(2, "More", "x");
    leaveText(2, "Sub\\Sub\\Value", "x");
    expectOutcome(2, "", 0);
}

TEST_F(OutcomesTest, MissingKeyIsAGoodOutcome) {
    expectOutcome(3, "", 0);
}

TEST_F(OutcomesTest, MissingValuesReadAsEmptyAndZero) {
    leaveText(4, "Result", "only a text");
    expectOutcome(4, "only a text", 0);
    leaveNumber(4, "Error", 0xFFFFFFFF);
    expectOutcome(4, "", 0xFFFFFFFF);
}

TEST_F(OutcomesTest, NumberWhereTheTextBelongsReadsAsEmpty) {
    leaveNumber(5, "Result", 0x41414141);
    leaveNumber(5, "Error", 1);
    expectOutcome(5, "", 1);
}

TEST_F(OutcomesTest, LongTextWhereTheNumberBelongsReadsAsZero) {
    leaveText(6, "Result", "text");
    leaveText(6, "Error", "seven");
    expectOutcome(6, "text", 0);
}

TEST_F(OutcomesTest, OutcomesOfOtherRunsStay) {
    leaveText(1, "Result", "one");
    leaveText(10, "Result", "ten");
    leaveText(7, "Result", "nobody's");
    expectOutcome(1, "one", 0);
    EXPECT_TRUE(keyExists(allOutcomes + "\\Schedule7"));
    expectOutcome(10, "ten", 0);
}

TEST_F(OutcomesTest, KeyIsGoneAlsoWhenReadingItFails) {
    for (const std::string failing : {"Result", "Error"}) {
        leaveText(8, "Result", "of an earlier run");
        leaveNumber(8, "Error", 5);
        beforeReading = [&](const std::string& value) {
            if (value == failing)
                throw std::bad_alloc();
        };
        EXPECT_THROW(source.take(8), std::bad_alloc);
        beforeReading = nullptr;
        expectOutcome(8, "", 0);
    }
}

TEST_F(OutcomesTest, DiscardingRemovesThemAllAndNothingElse) {
    leaveText(1, "Result", "one");
    leaveText(700, "Result", "seven hundred");
    base::writeString(HKEY_LOCAL_MACHINE, allOutcomes + "\\Value", "x");
    base::writeString(HKEY_LOCAL_MACHINE, "SOFTWARE\\Brindlewood\\Other\\Value", "x");
    RegistryOutcomes::discardAll();
    EXPECT_FALSE(keyExists(allOutcomes));
    EXPECT_TRUE(keyExists("SOFTWARE\\Brindlewood\\Other"));
    RegistryOutcomes::discardAll();
    EXPECT_TRUE(keyExists("SOFTWARE\\Brindlewood\\Other"));
}

} // namespace
} // namespace scheduler
