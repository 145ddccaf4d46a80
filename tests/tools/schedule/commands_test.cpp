#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/ui/programtexts.h"
#include "tests/support/filecontent.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/temporaryfolder.h"
#include "tools/schedule/commands.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

namespace {

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

std::atomic<ULONGLONG> slept = 0; ///< milliseconds
int sleepUntilARun = -1;          ///< Sleep calls until an entry has run; -1 for never

ULONGLONG WINAPI simulatedTicks() {
    return slept;
}

void WINAPI simulatedSleep(DWORD milliseconds) {
    slept += milliseconds;
    if (sleepUntilARun-- != 0)
        return;
    scheduler::ScheduleList list;
    list.append({});
    list[0].lastRun = base::TimeValue(1);
    EXPECT_TRUE(scheduler::saveSchedule(list));
}

/// Each test starts without a schedule. The test program has a Windows of its own.
class ScheduleTool : public testing::Test {
protected:
    ScheduleTool() { DeleteFileA(scheduler::schedulePath().c_str()); }

    struct Result {
        int exitCode;
        std::string output;
        std::string errors;
    };
    static Result run(const std::vector<std::string>& words) {
        CaptureStdout();
        CaptureStderr();
        Result result{.exitCode = runCommand(words), .output = {}, .errors = {}};
        result.output = GetCapturedStdout();
        result.errors = GetCapturedStderr();
        return result;
    }
};

TEST_F(ScheduleTool, ParsesOnlyWholeDecimalNumbers) {
    EXPECT_EQ(parseNumber("0"), 0u);
    EXPECT_EQ(parseNumber("180"), 180u);
    EXPECT_EQ(parseNumber("007"), 7u);
    EXPECT_EQ(parseNumber("4294967295"), 4'294'967'295u);
    for (const char* word : {"", " ", "-1", "+1", " 1", "1 ", "1s", "1.5", "0x1", "4294967296", "three"})
        EXPECT_EQ(parseNumber(word), std::nullopt) << '"' << word << '"';
}

TEST_F(ScheduleTool, UnknownCommandShowsTheUsage) {
    const std::vector<std::string> misuses[] = {
        {},
        {"help"},
        {"SHOW"},
        {"show", "more"},
        {"sample"},
        {"sample", ""},
        {"demo", "folder", "more"},
        {"wait", "1"},
        {"wait", "1", "x"},
        {"wait", "-1", "1"},
    };
    for (const auto& words : misuses) {
        const Result result = run(words);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(words);
        EXPECT_EQ(result.errors.rfind("usage: schedule sample DIR", 0), 0u) << result.errors;
        EXPECT_EQ(result.output, "");
    }
    EXPECT_NE(run({}).errors.find("replace the schedule"), std::string::npos);
}

TEST_F(ScheduleTool, DemonstrationIsTheFirstThreeEntriesOfTheSample) {
    const Result none = run({"show"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_EQ(none.output, "");
    EXPECT_EQ(none.errors, "schedule: cannot read " + scheduler::schedulePath() + "\n");
    const test::TemporaryFolder folder;
    for (const std::string command : {"sample", "demo"}) {
        EXPECT_EQ(run({command, folder.path()}).exitCode, 0);
        EXPECT_EQ(run({command, folder.path(), "60"}).exitCode, 0);
        scheduler::ScheduleList written;
        EXPECT_TRUE(scheduler::loadSchedule(written, scheduler::scheduleMagic));
        const Result shown = run({"show"});
        EXPECT_EQ(shown.exitCode, 0);
        EXPECT_EQ(shown.errors, "");
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count(shown.output, '\n')), 1 + written.size());
        EXPECT_TRUE(shown.output.starts_with("Project ")) << shown.output;
        EXPECT_EQ(written.size() == 3, command == "demo");
        EXPECT_EQ((shown.output.find("hourly") != std::string::npos), command == "sample") << shown.output;
    }
}

TEST_F(ScheduleTool, SampleFailsWhenItCannotBeWritten) {
    const test::TemporaryFolder folder;
    ASSERT_TRUE(test::writeFile(folder.file("file"), ""));
    const Result result = run({"sample", folder.file("file")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.errors, "schedule: cannot write sample projects into " + folder.file("file") + ", or " +
                                 scheduler::schedulePath() + "\n");
}

TEST_F(ScheduleTool, DoesNotReplaceTheScheduleOfARunningScheduler) {
    const test::TemporaryFolder folder;
    for (const bool suspended : {false, true}) {
        const HWND window =
            CreateWindowA("STATIC", scheduler::titleFor(suspended).c_str(), WS_OVERLAPPEDWINDOW, 0, 0, 100,
                          100, nullptr, nullptr, nullptr, nullptr);
        ASSERT_TRUE(window);
        const Result result = run({"sample", folder.path()});
        DestroyWindow(window);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_EQ(
            result.errors,
            "schedule: the schedule was not replaced, because the scheduler is running: exit it first\n");
        EXPECT_EQ(run({"show"}).exitCode, 1) << "nothing was written";
    }
}

TEST_F(ScheduleTool, WaitsForTheGivenNumberOfRunsOrItsTimeLimit) {
    scheduler::ScheduleList list;
    list.assign(std::vector<scheduler::ScheduledProject>(3));
    list[0].lastRun = list[1].lastRun = base::TimeValue(1);
    list[1].running = 1;
    ASSERT_TRUE(scheduler::saveSchedule(list));
    EXPECT_EQ(run({"wait", "0", "0"}).exitCode, 0);
    EXPECT_EQ(run({"wait", "1", "0"}).exitCode, 0);
    const Result tooFew = run({"wait", "2", "60"});
    EXPECT_EQ(tooFew.exitCode, 1) << "one entry is running again, one has never run";
    EXPECT_EQ(tooFew.errors, "schedule: too few entries have run within the time limit\n");
    EXPECT_GE(slept, 60'000U);
    EXPECT_LT(slept, 61'000U);
    DeleteFileA(scheduler::schedulePath().c_str());
    slept = 0;
    sleepUntilARun = 10;
    EXPECT_EQ(run({"wait", "1", "60"}).exitCode, 0);
    EXPECT_LT(slept, 10'000U);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(GetTickCount64, "_GetTickCount64@0", simulatedTicks);
SCHEDULER_REPLACE_IMPORT(Sleep, "_Sleep@4", simulatedSleep);
