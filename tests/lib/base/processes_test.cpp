#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "lib/base/processes.h"
#include "lib/base/threads.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"
#include "tests/support/startedprocess.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <array>
#include <fstream>
#include <optional>
#include <string>

namespace {

/// The result of waiting, when a test says so.
bool waitingFails = false;

/// The error with which starting fails, when a test says so.
std::optional<DWORD> startingError;

DWORD WINAPI waitThatMayFail(HANDLE handle, DWORD milliseconds) {
    static const auto original =
        test::platformFunction<decltype(&WaitForSingleObject)>("kernel32.dll", "WaitForSingleObject");
    return waitingFails ? WAIT_FAILED : original(handle, milliseconds);
}

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
SCHEDULER_REPLACE_IMPORT(WaitForSingleObject, "_WaitForSingleObject@8", waitThatMayFail);

namespace base {
namespace {

using test::child;
using test::fileContent;
using test::handleCount;
using test::isSet;
using test::makeEvent;
using test::patience;
using test::TemporaryFolder;
using test::uniqueName;

std::string numberOf(HANDLE handle) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(handle));
}

/// What the started process says of its own start.
struct Report {
    DWORD processId = 0;
    DWORD flags = 0;
    DWORD showCommand = 0;
    std::string directory;
    std::string commandLine;
};

/// Waits for the report of a process that may not even run yet.
Report readReport(const std::string& path) {
    for (DWORD waited = 0; waited < patience && !fileExists(path); waited += 20)
        Sleep(20);
    Report report;
    std::ifstream file(path);
    file >> report.processId >> report.flags >> report.showCommand >> std::ws;
    std::getline(file, report.directory);
    std::getline(file, report.commandLine);
    return report;
}

std::string withBackslash(std::string directory) {
    if (!directory.ends_with('\\'))
        directory += '\\';
    return directory;
}

/// The program's own standard handles, replaced while it lives.
class StandardHandles {
public:
    StandardHandles(HANDLE input, HANDLE output, HANDLE error) {
        SetStdHandle(STD_INPUT_HANDLE, input);
        SetStdHandle(STD_OUTPUT_HANDLE, output);
        SetStdHandle(STD_ERROR_HANDLE, error);
    }
    ~StandardHandles() {
        SetStdHandle(STD_INPUT_HANDLE, old_[0]);
        SetStdHandle(STD_OUTPUT_HANDLE, old_[1]);
        SetStdHandle(STD_ERROR_HANDLE, old_[2]);
    }
    StandardHandles(const StandardHandles&) = delete;
    StandardHandles& operator=(const StandardHandles&) = delete;

private:
    std::array<HANDLE, 3> old_ = {GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE),
                                  GetStdHandle(STD_ERROR_HANDLE)};
};

/// A file that processes inherit.
FileHandle openInheritable(const std::string& path) {
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.bInheritHandle = TRUE;
    return FileHandle(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &attributes, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
}

class ProcessTest : public testing::Test {
protected:
    TemporaryFolder folder_;
    const std::string report_ = folder_.file("report");
    const std::string reporting_ = child("report \"" + report_ + "\"");
};

TEST_F(ProcessTest, CreateProcessStartsWhatTheCommandLineSays) {
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof startupInfo;
    PROCESS_INFORMATION processInfo{};
    const std::string commandLine = child("exit 7");
    const std::string copy = commandLine.c_str();
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

// --- starting and waiting

TEST_F(ProcessTest, RunGivesTheExitCode) {
    for (const std::uint32_t code : {0U, 1U, 42U, 259U, 0x80000000U, 0xC0000005U})
        EXPECT_EQ(runProcessAndWait(child("exit " + std::to_string(code)), SW_HIDE, "", INFINITE), code);
}

TEST_F(ProcessTest, RunWaitsForTheEnd) {
    const ULONGLONG before = GetTickCount64();
    EXPECT_EQ(runProcessAndWait(child("sleep 700"), SW_HIDE, "", INFINITE), 5U);
    EXPECT_GE(GetTickCount64() - before, 650U);
    EXPECT_EQ(runProcessAndWait(child("sleep 100"), SW_HIDE, "", patience), 5U);
}

TEST_F(ProcessTest, RunThatTimesOutGives259AndClosesItsHandles) {
    ASSERT_EQ(runProcessAndWait(child("sleep 3000"), SW_HIDE, "", 1), DWORD{STILL_ACTIVE});
    const unsigned before = handleCount();
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(runProcessAndWait(child("sleep 3000"), SW_HIDE, "", 1), 259U);
    EXPECT_EQ(handleCount(), before);
}

TEST_F(ProcessTest, RunFailsForAProgramThatDoesNotExist) {
    EXPECT_EQ(runProcessAndWait(folder_.file("missing.exe"), SW_HIDE, "", INFINITE), 0xFFFFFFFFU);
    EXPECT_EQ(runProcessAndWait("", SW_HIDE, "", INFINITE), processFailed);
    EXPECT_EQ(runProcessAndWait("\"\" /s1 /r /e \"C:\\x.kra\"", SW_HIDE, "", INFINITE), processFailed);
    EXPECT_EQ(runProcessAndWait(child("exit 0"), SW_HIDE, folder_.file("missing-directory"), INFINITE),
              processFailed);
}

TEST_F(ProcessTest, RunThatCannotBeWaitedForFailsAndLeavesItsHandlesOpen) {
    const auto run = [] {
        waitingFails = true;
        const std::uint32_t result = runProcessAndWait(child("exit 3"), SW_HIDE, "", INFINITE);
        waitingFails = false;
        return result;
    };
    EXPECT_EQ(run(), processFailed);
    const unsigned before = handleCount();
    EXPECT_EQ(run(), processFailed);
    EXPECT_EQ(handleCount(), before + 2) << "the process's and its thread's";
}

TEST_F(ProcessTest, RunLosesNoHandle) {
    const auto runBoth = [this] {
        EXPECT_EQ(runProcessAndWait(child("exit 3"), SW_HIDE, "", INFINITE), 3U);
        EXPECT_EQ(runProcessAndWait(folder_.file("missing.exe"), SW_HIDE, "", INFINITE), processFailed);
    };
    runBoth();
    const unsigned before = handleCount();
    for (int i = 0; i < 5; ++i)
        runBoth();
    EXPECT_EQ(handleCount(), before);
}

TEST_F(ProcessTest, RunOfAProcessThatIsKilledEnds) {
    struct Run {
        std::string commandLine;
        std::uint32_t exitCode = 0;
        KernelHandle over = makeEvent(false);
    } run{child("report-and-sleep \"" + report_ + "\"")};
    ASSERT_NE(startThread(
                  [](void* argument) {
                      auto& r = *static_cast<Run*>(argument);
                      r.exitCode = runProcessAndWait(r.commandLine, SW_HIDE, "", INFINITE);
                      SetEvent(r.over.get());
                  },
                  &run),
              threadFailed);
    const KernelHandle process(OpenProcess(PROCESS_TERMINATE, FALSE, readReport(report_).processId));
    ASSERT_TRUE(process);
    EXPECT_FALSE(isSet(run.over));
    ASSERT_TRUE(TerminateProcess(process.get(), 77));
    ASSERT_EQ(WaitForSingleObject(run.over.get(), INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(run.exitCode, 77U);
}

TEST_F(ProcessTest, RunUsesTheDirectoryAndShowCommand) {
    ASSERT_EQ(runProcessAndWait(reporting_, SW_SHOWMINNOACTIVE, folder_.path(), INFINITE), 0U);
    const Report report = readReport(report_);
    EXPECT_EQ(report.showCommand, 7U);
    EXPECT_EQ(report.flags & STARTF_USESHOWWINDOW, DWORD{STARTF_USESHOWWINDOW});
    EXPECT_EQ(withBackslash(report.directory), folder_.path());
    EXPECT_EQ(report.commandLine, reporting_);
}

TEST_F(ProcessTest, RunInheritsHandles) {
    const KernelHandle inheritable = makeEvent(true);
    const KernelHandle own = makeEvent(false);
    EXPECT_EQ(runProcessAndWait(child("set " + numberOf(inheritable.get())), SW_HIDE, "", INFINITE), 0U);
    EXPECT_TRUE(isSet(inheritable));
    runProcessAndWait(child("set " + numberOf(own.get())), SW_HIDE, "", INFINITE);
    EXPECT_FALSE(isSet(own));
}

TEST_F(ProcessTest, RunPassesTheStandardHandles) {
    const FileHandle input = openInheritable(folder_.file("input"));
    const FileHandle output = openInheritable(folder_.file("output"));
    const FileHandle error = openInheritable(folder_.file("error"));
    DWORD written = 0;
    ASSERT_TRUE(WriteFile(input.get(), "input", 5, &written, nullptr));
    {
        const StandardHandles replaced(input.get(), output.get(), error.get());
        ASSERT_EQ(runProcessAndWait(reporting_, SW_SHOWMINNOACTIVE, "", INFINITE), 0U);
        SetFilePointer(input.get(), 0, nullptr, FILE_BEGIN);
        EXPECT_EQ(runProcessAndWait(child("copy-input"), SW_SHOWMINNOACTIVE, "", INFINITE), 0U);
        EXPECT_EQ(runProcessAndWait(child("write-error"), SW_SHOWMINNOACTIVE, "", INFINITE), 0U);
    }
    EXPECT_EQ(fileContent(folder_.file("output")), "input");
    EXPECT_EQ(fileContent(folder_.file("error")), "error");
    EXPECT_EQ(readReport(report_).flags, DWORD{STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES});
}

TEST_F(ProcessTest, RunOfAHiddenProcessPassesTheInputAlone) {
    const FileHandle input = openInheritable(folder_.file("input"));
    const FileHandle output = openInheritable(folder_.file("output"));
    const FileHandle error = openInheritable(folder_.file("error"));
    {
        const StandardHandles replaced(input.get(), output.get(), error.get());
        ASSERT_EQ(runProcessAndWait(reporting_, SW_HIDE, "", INFINITE), 0U);
        runProcessAndWait(child("write-output"), SW_HIDE, "", INFINITE);
        runProcessAndWait(child("write-error"), SW_HIDE, "", INFINITE);
    }
    EXPECT_EQ(fileContent(folder_.file("output")), "");
    EXPECT_EQ(fileContent(folder_.file("error")), "");
    EXPECT_EQ(readReport(report_).flags, DWORD{STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES});
}

TEST_F(ProcessTest, RunPassesStandardHandlesWhenThereIsAtLeastOne) {
    const FileHandle file = openInheritable(folder_.file("file"));
    const struct {
        HANDLE input;
        HANDLE output;
        HANDLE error;
        bool passed;
    } rows[] = {
        {file.get(), nullptr, nullptr, true},
        {nullptr, file.get(), nullptr, true},
        {nullptr, nullptr, file.get(), true},
        {nullptr, nullptr, nullptr, false},
    };
    for (const auto& row : rows) {
        {
            const StandardHandles replaced(row.input, row.output, row.error);
            ASSERT_EQ(runProcessAndWait(reporting_, SW_SHOWMINNOACTIVE, "", INFINITE), 0U);
        }
        EXPECT_EQ((readReport(report_).flags & STARTF_USESTDHANDLES) != 0, row.passed);
        ASSERT_TRUE(DeleteFileA(report_.c_str()));
    }
}

} // namespace
} // namespace base
