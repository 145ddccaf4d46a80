#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "scheduler/model/scheduledproject.h"
#include "scheduler/run/outcomes.h"
#include "scheduler/run/worker.h"
#include "tests/scheduler/run/messagewindow.h"
#include "tests/support/allocations.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"
#include "tests/support/samplespider.h"

#include <windows.h>

#include <process.h>

#include <gmock/gmock.h>

#include <atomic>
#include <map>
#include <new>
#include <sstream>
#include <tlhelp32.h>
#include <vector>

namespace scheduler {
namespace {

using test::builtProgram;
using test::fileContent;
using test::handleCount;
using test::MessageWindow;
using test::patience;
using test::registerSpider;
using test::SpiderFolder;
using testing::HasSubstr;
using testing::Not;

using Ends = std::map<WPARAM, int>;

bool threadsAreRefused = false;

std::uintptr_t beginThreadUnlessRefused(void (*start)(void*), unsigned stackSize, void* argument) {
    static const auto original =
        test::platformFunction<decltype(&_beginthread)>("msvcrt.dll", "_beginthread");
    return threadsAreRefused ? base::threadFailed : original(start, stackSize, argument);
}

std::atomic<int> postsRefused = 0; ///< as by a queue that is full

BOOL WINAPI postUnlessRefused(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static const auto original =
        test::platformFunction<decltype(&PostMessageA)>("user32.dll", "PostMessageA");
    if (message == WM_RUN_FINISHED && postsRefused > 0) {
        --postsRefused;
        return FALSE;
    }
    return original(window, message, wParam, lParam);
}

/// The runs of these tests leave their outcomes in a Windows that belongs to this test program alone.
class WorkerTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(registerSpider()); }

    WorkerTest() { launcher.reportTo(window.handle()); }

    bool launchProject(const std::string& path, std::int32_t runNumber) {
        ScheduledProject entry;
        entry.path = path;
        entry.runNumber = runNumber;
        return launcher.launch(entry);
    }
    bool launchCommand(const std::string& commandLine, std::int32_t runNumber) {
        return launchProject("run:" + commandLine, runNumber);
    }

    MessageWindow window;
    SpiderFolder folder;
    WorkerLauncher launcher;
};

TEST(RunFinishedMessage, HasItsNumber) {
    EXPECT_EQ(WM_RUN_FINISHED, 0x0401u);
}

TEST_F(WorkerTest, EndOfARunIsPostedWhenTheProcessHasEnded) {
    ASSERT_TRUE(launchProject(folder.project("a b.kra", "ms=50\nresult=7 pages\nerror=2"), 7));
    EXPECT_EQ(window.waitForEnds(1), (Ends{{7, 1}}));
    EXPECT_THAT(folder.log(), HasSubstr("end run 7: error 2"));
    const RunOutcome outcome = RegistryOutcomes().take(7);
    EXPECT_EQ(outcome.resultText, "7 pages");
    EXPECT_EQ(outcome.errorCode, 2u);
    EXPECT_FALSE(window.hasMore());
}

TEST_F(WorkerTest, LaunchingDoesNotWait) {
    const std::string project = folder.project("a.kra", "ms=1500");
    ASSERT_TRUE(launchProject(project, 1));
    EXPECT_THAT(folder.log(), Not(HasSubstr("end run 1")));
    EXPECT_FALSE(window.hasMore());
    EXPECT_EQ(window.waitForEnds(1), (Ends{{1, 1}}));
}

TEST_F(WorkerTest, ProcessIsStartedMinimisedInItsProgramsFolder) {
    const std::string program = builtProgram("lib\\base\\startedprocess.exe");
    const std::string report = folder.path() + "report.txt";
    const std::string commandLine = '"' + program + "\" report \"" + report + '"';
    ASSERT_TRUE(launchCommand(commandLine, 1));
    window.waitForEnds(1);
    std::istringstream lines(fileContent(report));
    std::string processId, flags, show, directory, seenCommandLine;
    lines >> processId >> flags >> show >> std::ws;
    std::getline(lines, directory);
    std::getline(lines, seenCommandLine);
    EXPECT_EQ(show, "7");
    EXPECT_EQ(directory + '\\', base::directoryOf(program));
    EXPECT_EQ(seenCommandLine, commandLine);
}

TEST_F(WorkerTest, ReportsToTheWindowOfTheLaunch) {
    const MessageWindow later;
    ASSERT_TRUE(launchProject(folder.project("a.kra", "ms=100"), 1));
    launcher.reportTo(later.handle());
    EXPECT_EQ(window.waitForEnds(1), (Ends{{1, 1}}));
    EXPECT_FALSE(later.hasMore());
}

TEST_F(WorkerTest, RunsLeaveNoMemoryBehind) {
    const std::string project = folder.project("a.kra", "result=7 pages, and what else was there to tell");
    const auto run = [&] {
        ASSERT_TRUE(launchProject(project, 1));
        window.waitForEnds(1);
        EXPECT_THAT(RegistryOutcomes().take(1).resultText, HasSubstr("7 pages"));
    };
    run();
    // Threads may still be on their way out, the first one here and the last one below. What it holds is less
    // than one block for each run.
    const std::size_t before = test::heldBlocks();
    for (int i = 0; i < 10; ++i)
        run();
    const ULONGLONG last = GetTickCount64() + patience;
    while (test::heldBlocks() > before && GetTickCount64() < last)
        Sleep(1);
    EXPECT_LE(test::heldBlocks(), before);
}

TEST_F(WorkerTest, StartThatFailsIsAnEndAtOnce) {
    ASSERT_TRUE(launchCommand("\"C:\\no such folder\\program.exe\" /s1", 1));
    ASSERT_TRUE(launchCommand("", 2));
    ASSERT_TRUE(launchProject("C:\\a type without a program.kra0", 3));
    EXPECT_EQ(window.waitForEnds(3), (Ends{{1, 1}, {2, 1}, {3, 1}}));
    const RunOutcome outcome = RegistryOutcomes().take(1);
    EXPECT_EQ(outcome.resultText, "");
    EXPECT_EQ(outcome.errorCode, 0u);
}

// Long enough that its text takes memory of its own.
ScheduledProject longCommand() {
    ScheduledProject entry;
    entry.path = "run:\"C:\\Spider\\spider.exe\" /s1";
    entry.runNumber = 1;
    return entry;
}

TEST_F(WorkerTest, WithoutMemoryNothingIsLaunched) {
    const ScheduledProject entry = longCommand();
    {
        const test::RefusedAllocations refused;
        EXPECT_THROW(static_cast<void>(launcher.launch(entry)), std::bad_alloc);
    }
    EXPECT_FALSE(window.hasMore());
}

TEST_F(WorkerTest, WithoutAThreadNothingIsLaunchedAndTheRequestIsFreed) {
    // Often, so that the end of an earlier test's thread does not matter.
    constexpr std::size_t launches = 100;
    const ScheduledProject entry = longCommand();
    threadsAreRefused = true;
    const std::size_t allocatedBefore = test::allocationCount;
    const std::size_t freedBefore = test::deallocationCount;
    for (std::size_t i = 0; i < launches; ++i)
        EXPECT_FALSE(launcher.launch(entry));
    const std::size_t allocated = test::allocationCount - allocatedBefore;
    const std::size_t freed = test::deallocationCount - freedBefore;
    threadsAreRefused = false;
    EXPECT_GE(allocated, 3 * launches) << "a request, its text and what the thread would get";
    EXPECT_GE(freed, allocated);
    EXPECT_FALSE(window.hasMore());
}

// The process that runs a program of this name, when there is one.
base::KernelHandle runningProcess(const std::string& program) {
    const base::FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32 process{};
    process.dwSize = sizeof process;
    for (BOOL more = Process32First(snapshot.get(), &process); more;
         more = Process32Next(snapshot.get(), &process)) {
        if (program == process.szExeFile)
            return base::KernelHandle(OpenProcess(PROCESS_TERMINATE, FALSE, process.th32ProcessID));
    }
    return {};
}

TEST_F(WorkerTest, ProcessEndedFromOutsideIsAnEndWithoutAnOutcome) {
    ASSERT_TRUE(launchProject(folder.project("a.kra", "seconds=600\nresult=never left\nerror=1"), 5));
    ASSERT_TRUE(folder.logShows("start run 5"));
    const base::KernelHandle process = runningProcess("spider.exe");
    ASSERT_TRUE(process);
    ASSERT_TRUE(TerminateProcess(process.get(), 1));
    EXPECT_EQ(window.waitForEnds(1), (Ends{{5, 1}}));
    const RunOutcome outcome = RegistryOutcomes().take(5);
    EXPECT_EQ(outcome.resultText, "");
    EXPECT_EQ(outcome.errorCode, 0u);
}

TEST_F(WorkerTest, WhateverASpiderLeavesTheRunEnds) {
    launchProject(folder.project("crash.kra", "crash=1"), 1);
    launchProject(folder.project("nothing.kra", "leave=nothing"), 2);
    launchProject(folder.project("number.kra", "result-as-number=1\nerror=4"), 3);
    launchProject(folder.path() + "missing.kra", 4);
    EXPECT_EQ(window.waitForEnds(4), (Ends{{1, 1}, {2, 1}, {3, 1}, {4, 1}}));
    RegistryOutcomes outcomes;
    EXPECT_EQ(outcomes.take(1).errorCode, 0u);
    EXPECT_EQ(outcomes.take(2).errorCode, 0u);
    const RunOutcome number = outcomes.take(3);
    EXPECT_EQ(number.resultText, "");
    EXPECT_EQ(number.errorCode, 4u);
    EXPECT_EQ(outcomes.take(4).errorCode, 2u);
}

TEST_F(WorkerTest, WindowThatIsGoneDoesNoHarm) {
    {
        const MessageWindow gone;
        launcher.reportTo(gone.handle());
        ASSERT_TRUE(launchProject(folder.project("a.kra", "ms=200"), 1));
    }
    EXPECT_TRUE(folder.logShows("end run 1"));
}

TEST_F(WorkerTest, EndOfARunIsPostedOnceTheQueueTakesIt) {
    postsRefused = 3;
    ASSERT_TRUE(launchCommand("", 5));
    EXPECT_EQ(window.waitForEnds(1), (Ends{{5, 1}}));
    EXPECT_EQ(postsRefused, 0);
    EXPECT_FALSE(window.hasMore());
}

TEST_F(WorkerTest, TwoHundredRunsSideBySideEndOnceEach) {
    constexpr int runs = 200;
    const std::string project = folder.project("a.kra", "ms=300\nerror=1");
    launchProject(project, 1);
    window.waitForEnds(1);
    const unsigned handlesBefore = handleCount();

    Ends expected;
    for (int number = 1; number <= runs; ++number) {
        ASSERT_TRUE(launchProject(project, number));
        expected[static_cast<WPARAM>(number)] = 1;
    }
    EXPECT_EQ(window.waitForEnds(runs), expected);
    EXPECT_FALSE(window.hasMore());

    RegistryOutcomes outcomes;
    for (std::uint32_t number = 1; number <= runs; ++number)
        EXPECT_EQ(outcomes.take(number).errorCode, 1u) << number;
    // A worker has posted its message shortly before its thread ends. The platform itself may keep a few more
    // handles than before; what a run leaves behind would be there as often as it ran.
    const unsigned few = handlesBefore + runs / 20;
    for (int tries = 0; tries < 500 && handleCount() > few; ++tries)
        Sleep(20);
    EXPECT_LE(handleCount(), few);
}

} // namespace
} // namespace scheduler

SCHEDULER_REPLACE_IMPORT(PostMessageA, "_PostMessageA@16", scheduler::postUnlessRefused);
SCHEDULER_REPLACE_IMPORT(_beginthread, "__beginthread", scheduler::beginThreadUnlessRefused);
