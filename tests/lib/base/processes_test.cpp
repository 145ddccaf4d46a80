#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

SCHEDULER_STAND_IN("kernel32.dll", CreateProcessA, "_CreateProcessA@40");
SCHEDULER_STAND_IN("kernel32.dll", WaitForSingleObject, "_WaitForSingleObject@8");
SCHEDULER_STAND_IN("kernel32.dll", GetExitCodeProcess, "_GetExitCodeProcess@8");

namespace base {
namespace {

using testing::ElementsAre;

/// `argument` is an exit code, or the name of an event. The child waits for the event and ends with code 5.
std::string child(const std::string& argument) {
    return "\"" + directoryOf(executablePath()) + "startedprocess.exe\" " + argument;
}

std::uint32_t run(const std::string& argument, DWORD timeout = INFINITE) {
    return runProcessAndWait(child(argument), SW_HIDE, "", timeout);
}

struct Start {
    std::string commandLine, directory;
    BOOL inheritsHandles;
    STARTUPINFOA info;
};
std::vector<Start> starts;
std::vector<DWORD> waits;

class Processes : public testing::Test {
protected:
    Processes() {
        starts.clear();
        waits.clear();
        platform::CreateProcessA.onCall = [](LPCSTR program, LPSTR commandLine, LPSECURITY_ATTRIBUTES process,
                                             LPSECURITY_ATTRIBUTES thread, BOOL inheritsHandles, DWORD flags,
                                             LPVOID environment, LPCSTR directory, LPSTARTUPINFOA info,
                                             LPPROCESS_INFORMATION) {
            EXPECT_TRUE(!program && !process && !thread && !environment && flags == 0);
            EXPECT_EQ(info->cb, 68U);
            starts.push_back({commandLine, directory ? directory : "", inheritsHandles, *info});
        };
        platform::WaitForSingleObject.onCall = [](HANDLE, DWORD milliseconds) {
            waits.push_back(milliseconds);
        };
    }
    ~Processes() override {
        platform::CreateProcessA.onCall = nullptr;
        platform::WaitForSingleObject.onCall = nullptr;
    }
};

TEST_F(Processes, StartAndRunPassTheShowCommandAndTheDirectory) {
    for (const std::string directory : {"", "C:\\"}) {
        EXPECT_TRUE(startProcess(child("0"), SW_SHOWMINNOACTIVE, directory));
        EXPECT_THAT(waits, testing::IsEmpty()) << "startProcess must not wait";
        EXPECT_EQ(runProcessAndWait(child("3"), SW_SHOWMINNOACTIVE, directory, INFINITE), 3U);
        EXPECT_THAT(waits, ElementsAre(INFINITE));
        waits.clear();
        ASSERT_EQ(starts.size(), 2U);
        for (const bool runs : {false, true}) {
            EXPECT_EQ(starts[runs].commandLine, child(runs ? "3" : "0"));
            EXPECT_EQ(starts[runs].directory, directory);
            EXPECT_EQ(starts[runs].inheritsHandles, runs);
            EXPECT_EQ(starts[runs].info.dwFlags & ~DWORD{STARTF_USESTDHANDLES}, DWORD{STARTF_USESHOWWINDOW});
            EXPECT_EQ(starts[runs].info.wShowWindow, 7);
        }
        starts.clear();
    }
}

TEST_F(Processes, StartAndRunFailForAMissingProgramOrDirectory) {
    for (const char* commandLine : {"C:\\missing.exe", "\"\" /s1 /r /e \"C:\\x.kra\"", ""}) {
        EXPECT_FALSE(startProcess(commandLine, SW_HIDE, "")) << commandLine;
        EXPECT_EQ(runProcessAndWait(commandLine, SW_HIDE, "", INFINITE), 0xFFFFFFFFU) << commandLine;
    }
    EXPECT_FALSE(startProcess(child("0"), SW_HIDE, "C:\\missing"));
    EXPECT_EQ(runProcessAndWait(child("0"), SW_HIDE, "C:\\missing", INFINITE), processFailed);
}

TEST_F(Processes, RunReportsAFailedStartSeparatelyFromTheExitCode) {
    std::uint32_t startError = 77;
    EXPECT_EQ(runProcessAndWait("C:\\missing.exe", SW_HIDE, "", INFINITE, &startError), 0xFFFFFFFFU);
    EXPECT_EQ(startError, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(runProcessAndWait(child("4294967295"), SW_HIDE, "", INFINITE, &startError), 0xFFFFFFFFU);
    EXPECT_EQ(startError, DWORD{ERROR_SUCCESS});
}

TEST_F(Processes, RunReturnsTheExitCode) {
    for (const std::uint32_t code : {0U, 1U, 42U, 259U, 0x80000000U, 0xC0000005U})
        EXPECT_EQ(run(std::to_string(code)), code);
}

TEST_F(Processes, RunWaitsUntilTheProcessEndsOrIsKilled) {
    static const KernelHandle event(CreateEventA(nullptr, FALSE, FALSE, "process test"));
    platform::WaitForSingleObject.onCall = [](HANDLE, DWORD) { SetEvent(event.get()); };
    EXPECT_EQ(run("process test"), 5U);
    platform::WaitForSingleObject.onCall = [](HANDLE process, DWORD) { TerminateProcess(process, 77); };
    EXPECT_EQ(run("process test"), 77U);
}

TEST_F(Processes, LeakNoHandleEvenAfterATimeout) {
    const KernelHandle event(CreateEventA(nullptr, TRUE, FALSE, "process test"));
    const auto startAll = [] {
        EXPECT_TRUE(startProcess(child("0"), SW_HIDE, ""));
        EXPECT_FALSE(startProcess("C:\\missing.exe", SW_HIDE, ""));
        EXPECT_EQ(run("3"), 3U);
        EXPECT_EQ(run("process test", 1), 259U);
    };
    startAll(); // the first call leaves handles open
    const unsigned before = test::handleCount();
    startAll();
    EXPECT_EQ(test::handleCount(), before);
    SetEvent(event.get());
}

TEST_F(Processes, RunPassesTheStandardHandlesButOnlyTheInputToAHiddenProcess) {
    constexpr DWORD names[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};
    const KernelHandle some(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    std::array<HANDLE, 3> before{};
    for (std::size_t i = 0; i < 3; ++i)
        before[i] = GetStdHandle(names[i]);
    for (const int showCommand : {SW_HIDE, SW_SHOWMINNOACTIVE})
        for (std::size_t which = 0; which < 4; ++which) {
            std::array<HANDLE, 4> handles{};
            handles[which] = some.get();
            for (std::size_t i = 0; i < 3; ++i)
                SetStdHandle(names[i], handles[i]);
            runProcessAndWait(child("0"), showCommand, "", INFINITE);
            const STARTUPINFOA& info = starts.back().info;
            EXPECT_EQ((info.dwFlags & STARTF_USESTDHANDLES) != 0, which < 3) << which;
            EXPECT_EQ(info.hStdInput, handles[0]);
            EXPECT_EQ(info.hStdOutput, showCommand == SW_HIDE ? nullptr : handles[1]);
            EXPECT_EQ(info.hStdError, showCommand == SW_HIDE ? nullptr : handles[2]);
        }
    for (std::size_t i = 0; i < 3; ++i)
        SetStdHandle(names[i], before[i]);
}

TEST_F(Processes, RefusalWithoutAnErrorCodeCountsAsStarted) {
    static DWORD error;
    platform::CreateProcessA.onCall = [](auto...) { SetLastError(error); };
    platform::CreateProcessA.answer = FALSE;
    for (const bool counts : {true, false}) {
        error = counts ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
        EXPECT_EQ(startProcess(child("0"), SW_HIDE, ""), counts);
        EXPECT_EQ(run("0"), processFailed) << "there is no process to wait for";
    }
    platform::CreateProcessA.answer.reset();
}

TEST_F(Processes, RunFailsAndLeavesTheHandlesOpenWhenTheWaitFails) {
    platform::WaitForSingleObject.answer = WAIT_FAILED;
    EXPECT_EQ(run("3"), processFailed);
    const unsigned before = test::handleCount();
    EXPECT_EQ(run("3"), processFailed);
    EXPECT_EQ(test::handleCount(), before + 2) << "the process handle and the thread handle";
    platform::WaitForSingleObject.answer.reset();
}

TEST_F(Processes, RunReturns0WhenTheExitCodeIsUnavailable) {
    platform::GetExitCodeProcess.answer = FALSE;
    EXPECT_EQ(run("3"), 0U);
    platform::GetExitCodeProcess.answer.reset();
}

} // namespace
} // namespace base
