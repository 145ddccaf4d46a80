#include "lib/base/handles.h"
#include "lib/base/processes.h"
#include "lib/base/threads.h"
#include "tests/lib/base/processfixture.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"
#include "tests/support/startedprocess.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

/// The result of waiting, when a test says so.
bool waitingFails = false;

DWORD WINAPI waitThatMayFail(HANDLE handle, DWORD milliseconds) {
    static const auto original =
        test::platformFunction<decltype(&WaitForSingleObject)>("kernel32.dll", "WaitForSingleObject");
    return waitingFails ? WAIT_FAILED : original(handle, milliseconds);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(WaitForSingleObject, "_WaitForSingleObject@8", waitThatMayFail);

namespace base {
namespace {

using test::child;
using test::fileContent;
using test::handleCount;
using test::isSet;
using test::makeEvent;
using test::numberOf;
using test::patience;
using test::ProcessTest;
using test::readReport;
using test::Report;
using test::withBackslash;

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
