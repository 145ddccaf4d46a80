#include "lib/base/handles.h"
#include "lib/base/processes.h"
#include "tests/lib/base/processfixture.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"
#include "tests/support/startedprocess.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

/// The error with which starting fails, when a test says so.
std::optional<DWORD> startingError;

BOOL WINAPI createUnlessRefused(LPCSTR program, LPSTR commandLine, LPSECURITY_ATTRIBUTES processAttributes,
                                LPSECURITY_ATTRIBUTES threadAttributes, BOOL inheritHandles, DWORD flags,
                                LPVOID environment, LPCSTR directory, LPSTARTUPINFOA startupInfo,
                                LPPROCESS_INFORMATION processInfo) {
    static const auto original =
        test::platformFunction<decltype(&CreateProcessA)>("kernel32.dll", "CreateProcessA");
    if (!startingError)
        return original(program, commandLine, processAttributes, threadAttributes, inheritHandles, flags,
                        environment, directory, startupInfo, processInfo);
    SetLastError(*startingError);
    return FALSE;
}

/// While one lives, no process can be started.
class SimulatedFailure {
public:
    explicit SimulatedFailure(DWORD error) { startingError = error; }
    ~SimulatedFailure() { startingError.reset(); }
    SimulatedFailure(const SimulatedFailure&) = delete;
    SimulatedFailure& operator=(const SimulatedFailure&) = delete;
};

} // namespace

SCHEDULER_REPLACE_IMPORT(CreateProcessA, "_CreateProcessA@40", createUnlessRefused);

namespace base {
namespace {

using test::child;
using test::handleCount;
using test::isSet;
using test::makeEvent;
using test::numberOf;
using test::patience;
using test::ProcessTest;
using test::readReport;
using test::Report;
using test::uniqueName;
using test::withBackslash;

TEST_F(ProcessTest, CreateProcessStartsWhatTheCommandLineSays) {
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof startupInfo;
    PROCESS_INFORMATION processInfo{};
    const std::string commandLine = child("exit 7");
    const std::string copy = commandLine;
    ASSERT_TRUE(createProcess(commandLine, startupInfo, processInfo, "", false));
    const KernelHandle process(processInfo.hProcess);
    const KernelHandle thread(processInfo.hThread);
    EXPECT_EQ(commandLine, copy);
    ASSERT_EQ(WaitForSingleObject(process.get(), patience), WAIT_OBJECT_0);
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(process.get(), &code));
    EXPECT_EQ(code, 7U);
}

TEST_F(ProcessTest, CreateProcessFailsForAProgramThatDoesNotExist) {
    for (const std::string& commandLine :
         {folder_.file("missing.exe"), std::string("\"\" /s1 /r /e \"C:\\x.kra\""), std::string()}) {
        STARTUPINFOA startupInfo{};
        startupInfo.cb = sizeof startupInfo;
        PROCESS_INFORMATION processInfo{};
        EXPECT_FALSE(createProcess(commandLine, startupInfo, processInfo, "", false)) << commandLine;
        EXPECT_EQ(processInfo.hProcess, nullptr);
    }
}

TEST_F(ProcessTest, FailureWithoutAnErrorCountsAsSuccess) {
    for (const DWORD error : {DWORD{ERROR_SUCCESS}, DWORD{ERROR_FILE_NOT_FOUND}}) {
        const bool expected = error == ERROR_SUCCESS;
        const SimulatedFailure failure(error);
        STARTUPINFOA startupInfo{};
        startupInfo.cb = sizeof startupInfo;
        PROCESS_INFORMATION processInfo{};
        EXPECT_EQ(createProcess(child("exit 0"), startupInfo, processInfo, "", false), expected);
        EXPECT_EQ(startProcess(child("exit 0"), SW_HIDE, ""), expected);
        // There is no process to wait for.
        EXPECT_EQ(runProcessAndWait(child("exit 0"), SW_HIDE, "", INFINITE), processFailed);
    }
}

TEST_F(ProcessTest, StartProcessSaysHowTheWindowIsShown) {
    ASSERT_TRUE(startProcess(reporting_, SW_SHOWMINNOACTIVE, ""));
    const Report report = readReport(report_);
    EXPECT_EQ(report.flags, DWORD{STARTF_USESHOWWINDOW});
    EXPECT_EQ(report.showCommand, 7U);
    EXPECT_EQ(report.commandLine, reporting_);
}

TEST_F(ProcessTest, StartProcessUsesTheDirectory) {
    ASSERT_TRUE(startProcess(reporting_, SW_SHOW, folder_.path()));
    EXPECT_EQ(withBackslash(readReport(report_).directory), folder_.path());
}

TEST_F(ProcessTest, StartProcessInAnEmptyDirectoryUsesTheCallersOwn) {
    char own[MAX_PATH] = {};
    ASSERT_NE(GetCurrentDirectoryA(sizeof own, own), 0U);
    ASSERT_TRUE(startProcess(reporting_, SW_SHOW, ""));
    EXPECT_EQ(readReport(report_).directory, own);
}

TEST_F(ProcessTest, StartProcessDoesNotWait) {
    const std::string questionName = uniqueName("question");
    const std::string answerName = uniqueName("answer");
    const KernelHandle question = makeEvent(false, questionName.c_str());
    const KernelHandle answer = makeEvent(false, answerName.c_str());
    ASSERT_TRUE(startProcess(child("answer " + questionName + " " + answerName), SW_HIDE, ""));
    EXPECT_TRUE(SetEvent(question.get()));
    EXPECT_EQ(WaitForSingleObject(answer.get(), patience), WAIT_OBJECT_0);
}

TEST_F(ProcessTest, StartProcessInheritsNoHandles) {
    const std::string name = uniqueName("not-inherited");
    const KernelHandle inheritable = makeEvent(true);
    const KernelHandle named = makeEvent(false, name.c_str());
    ASSERT_TRUE(startProcess(child("set-both " + numberOf(inheritable.get()) + " " + name), SW_HIDE, ""));
    ASSERT_EQ(WaitForSingleObject(named.get(), patience), WAIT_OBJECT_0);
    EXPECT_FALSE(isSet(inheritable));
}

TEST_F(ProcessTest, StartProcessFails) {
    EXPECT_FALSE(startProcess(folder_.file("missing.exe"), SW_SHOW, ""));
    EXPECT_FALSE(startProcess("", SW_SHOW, ""));
    EXPECT_FALSE(startProcess(child("exit 0"), SW_SHOW, folder_.file("missing-directory")));
}

TEST_F(ProcessTest, StartProcessLosesNoHandle) {
    ASSERT_TRUE(startProcess(child("exit 0"), SW_HIDE, "")); // whatever the platform keeps from a first time
    startProcess(folder_.file("missing.exe"), SW_HIDE, "");
    const unsigned before = handleCount();
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(startProcess(child("exit 0"), SW_HIDE, ""));
        EXPECT_FALSE(startProcess(folder_.file("missing.exe"), SW_HIDE, ""));
    }
    EXPECT_EQ(handleCount(), before);
}

} // namespace
} // namespace base
