#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "lib/base/processes.h"
#include "tests/support/filecontent.h"
#include "tests/support/handlecount.h"
#include "tests/support/patience.h"
#include "tests/support/runonthread.h"
#include "tests/support/startedprocess.h"
#include "tests/support/temporaryfolder.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <fstream>
#include <string>

namespace base {
namespace {

using test::child;
using test::fileContent;
using test::handleCount;
using test::isSet;
using test::makeEvent;
using test::patience;
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

/// The program's own standard handles, replaced while it lives.
class StandardHandles {
public:
    explicit StandardHandles(const std::array<HANDLE, 3>& handles) { set(handles); }
    ~StandardHandles() { set(old_); }
    StandardHandles(const StandardHandles&) = delete;
    StandardHandles& operator=(const StandardHandles&) = delete;

private:
    static void set(const std::array<HANDLE, 3>& handles) {
        SetStdHandle(STD_INPUT_HANDLE, handles[0]);
        SetStdHandle(STD_OUTPUT_HANDLE, handles[1]);
        SetStdHandle(STD_ERROR_HANDLE, handles[2]);
    }

    const std::array<HANDLE, 3> old_ = {GetStdHandle(STD_INPUT_HANDLE), GetStdHandle(STD_OUTPUT_HANDLE),
                                        GetStdHandle(STD_ERROR_HANDLE)};
};

class Processes : public testing::Test {
protected:
    /// Waits for the report of a process that may not even run yet, and removes it.
    Report readReport() const {
        for (DWORD waited = 0; waited < patience && !fileExists(report_); waited += 20)
            Sleep(20);
        Report report;
        {
            std::ifstream file(report_);
            file >> report.processId >> report.flags >> report.showCommand >> std::ws;
            std::getline(file, report.directory);
            std::getline(file, report.commandLine);
        }
        EXPECT_TRUE(DeleteFileA(report_.c_str()));
        if (!report.directory.ends_with('\\'))
            report.directory += '\\';
        return report;
    }

    /// A file that processes inherit.
    FileHandle openInheritable(const std::string& name) const {
        SECURITY_ATTRIBUTES attributes{sizeof attributes, nullptr, TRUE};
        return FileHandle(CreateFileA(folder_.file(name).c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, &attributes, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    const test::TemporaryFolder folder_;
    const std::string report_ = folder_.file("report");
    const std::string reporting_ = child("report \"" + report_ + "\"");
    // For "answer": it waits for the question and sets the answer.
    const std::string questionName_ = uniqueName("question"), answerName_ = uniqueName("answer");
    const KernelHandle question_ = makeEvent(false, questionName_.c_str());
    const KernelHandle answer_ = makeEvent(false, answerName_.c_str());
    const std::string answering_ = child("answer " + questionName_ + " " + answerName_);
};

TEST_F(Processes, CreateStartsWhatTheCommandLineSays) {
    STARTUPINFOA startupInfo{};
    startupInfo.cb = sizeof startupInfo;
    PROCESS_INFORMATION processInfo{};
    ASSERT_TRUE(createProcess(child("exit 7"), startupInfo, processInfo, "", false));
    const KernelHandle process(processInfo.hProcess);
    const KernelHandle thread(processInfo.hThread);
    ASSERT_EQ(WaitForSingleObject(process.get(), patience), WAIT_OBJECT_0);
    DWORD code = 0;
    EXPECT_TRUE(GetExitCodeProcess(process.get(), &code));
    EXPECT_EQ(code, 7U);
}

TEST_F(Processes, StartAndRunShowTheWindowAndUseTheDirectoryAsTold) {
    char own[MAX_PATH] = {};
    ASSERT_NE(GetCurrentDirectoryA(sizeof own, own), 0U);
    for (const std::string& directory : {std::string(), folder_.path()})
        for (const bool waits : {false, true}) {
            SCOPED_TRACE(directory + (waits ? " waits" : ""));
            if (waits)
                ASSERT_EQ(runProcessAndWait(reporting_, SW_SHOWMINNOACTIVE, directory, INFINITE), 0U);
            else
                ASSERT_TRUE(startProcess(reporting_, SW_SHOWMINNOACTIVE, directory));
            const Report report = readReport();
            EXPECT_EQ(report.flags & ~DWORD{STARTF_USESTDHANDLES}, DWORD{STARTF_USESHOWWINDOW});
            EXPECT_EQ(report.showCommand, 7U);
            EXPECT_EQ(report.commandLine, reporting_);
            EXPECT_EQ(report.directory, directory.empty() ? std::string(own) + '\\' : directory);
        }
}

TEST_F(Processes, StartDoesNotWaitNorPassHandles) {
    const KernelHandle inheritable = makeEvent(true);
    ASSERT_TRUE(
        startProcess(child("set-both " + numberOf(inheritable.get()) + " " + answerName_), SW_HIDE, ""));
    ASSERT_EQ(WaitForSingleObject(answer_.get(), patience), WAIT_OBJECT_0);
    EXPECT_FALSE(isSet(inheritable));
    ResetEvent(answer_.get());
    ASSERT_TRUE(startProcess(answering_, SW_HIDE, ""));
    EXPECT_TRUE(SetEvent(question_.get()));
    EXPECT_EQ(WaitForSingleObject(answer_.get(), patience), WAIT_OBJECT_0);
}

TEST_F(Processes, WhatCannotBeStartedFails) {
    for (const std::string& commandLine :
         {folder_.file("missing.exe"), std::string("\"\" /s1 /r /e \"C:\\x.kra\""), std::string()}) {
        STARTUPINFOA startupInfo{};
        startupInfo.cb = sizeof startupInfo;
        PROCESS_INFORMATION processInfo{};
        EXPECT_FALSE(createProcess(commandLine, startupInfo, processInfo, "", false)) << commandLine;
        EXPECT_EQ(processInfo.hProcess, nullptr);
        EXPECT_FALSE(startProcess(commandLine, SW_HIDE, "")) << commandLine;
        EXPECT_EQ(runProcessAndWait(commandLine, SW_HIDE, "", INFINITE), 0xFFFFFFFFU) << commandLine;
    }
    const std::string noDirectory = folder_.file("missing-directory");
    EXPECT_FALSE(startProcess(child("exit 0"), SW_HIDE, noDirectory));
    EXPECT_EQ(runProcessAndWait(child("exit 0"), SW_HIDE, noDirectory, INFINITE), processFailed);
}

TEST_F(Processes, RunTellsAStartThatFailedFromAProcessThatFailed) {
    std::uint32_t startError = 77;
    EXPECT_EQ(runProcessAndWait(folder_.file("missing.exe"), SW_HIDE, "", INFINITE, &startError),
              0xFFFFFFFFU);
    EXPECT_EQ(startError, DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(runProcessAndWait(child("exit 4294967295"), SW_HIDE, "", INFINITE, &startError), 0xFFFFFFFFU);
    EXPECT_EQ(startError, DWORD{ERROR_SUCCESS});
}

TEST_F(Processes, RunGivesTheExitCode) {
    for (const std::uint32_t code : {0U, 1U, 42U, 259U, 0x80000000U, 0xC0000005U})
        EXPECT_EQ(runProcessAndWait(child("exit " + std::to_string(code)), SW_HIDE, "", INFINITE), code);
}

TEST_F(Processes, RunWaitsUntilTheProcessEndsOrIsKilled) {
    std::uint32_t code = 0;
    const test::ThreadRun answered([&] { code = runProcessAndWait(answering_, SW_HIDE, "", INFINITE); });
    EXPECT_TRUE(SetEvent(question_.get()));
    ASSERT_TRUE(answered.wait());
    EXPECT_EQ(code, 5U);
    const std::string endless = child("report-and-sleep \"" + report_ + "\"");
    const test::ThreadRun killed([&] { code = runProcessAndWait(endless, SW_HIDE, "", INFINITE); });
    const KernelHandle process(OpenProcess(PROCESS_TERMINATE, FALSE, readReport().processId));
    ASSERT_TRUE(process);
    EXPECT_FALSE(killed.wait(0));
    ASSERT_TRUE(TerminateProcess(process.get(), 77));
    ASSERT_TRUE(killed.wait());
    EXPECT_EQ(code, 77U);
}

TEST_F(Processes, NoHandleIsLostEvenByARunThatTimesOut) {
    const auto startAll = [this] {
        EXPECT_TRUE(startProcess(child("exit 0"), SW_HIDE, ""));
        EXPECT_FALSE(startProcess(folder_.file("missing.exe"), SW_HIDE, ""));
        EXPECT_EQ(runProcessAndWait(child("exit 3"), SW_HIDE, "", INFINITE), 3U);
        EXPECT_EQ(runProcessAndWait(folder_.file("missing.exe"), SW_HIDE, "", INFINITE), processFailed);
        EXPECT_EQ(runProcessAndWait(answering_, SW_HIDE, "", 1), 259U);
    };
    startAll(); // the platform keeps some from the first time
    const unsigned before = handleCount();
    startAll();
    startAll();
    EXPECT_EQ(handleCount(), before);
    SetEvent(question_.get());
}

TEST_F(Processes, RunPassesInheritableHandlesOnly) {
    const KernelHandle inheritable = makeEvent(true);
    const KernelHandle own = makeEvent(false);
    EXPECT_EQ(runProcessAndWait(child("set " + numberOf(inheritable.get())), SW_HIDE, "", INFINITE), 0U);
    EXPECT_TRUE(isSet(inheritable));
    runProcessAndWait(child("set " + numberOf(own.get())), SW_HIDE, "", INFINITE);
    EXPECT_FALSE(isSet(own));
}

TEST_F(Processes, RunPassesTheStandardHandlesButOfAHiddenOneTheInputAlone) {
    const FileHandle input = openInheritable("input");
    const FileHandle output = openInheritable("output");
    const FileHandle error = openInheritable("error");
    DWORD written = 0;
    ASSERT_TRUE(WriteFile(input.get(), "input", 5, &written, nullptr));
    const StandardHandles replaced({input.get(), output.get(), error.get()});
    for (const int showCommand : {SW_HIDE, SW_SHOWMINNOACTIVE}) {
        SetFilePointer(input.get(), 0, nullptr, FILE_BEGIN);
        runProcessAndWait(child("copy-input"), showCommand, "", INFINITE);
        runProcessAndWait(child("write-error"), showCommand, "", INFINITE);
        EXPECT_EQ(SetFilePointer(input.get(), 0, nullptr, FILE_CURRENT), 5U) << "the input is read";
        EXPECT_EQ(fileContent(folder_.file("output")), showCommand == SW_HIDE ? "" : "input");
        EXPECT_EQ(fileContent(folder_.file("error")), showCommand == SW_HIDE ? "" : "error");
    }
}

TEST_F(Processes, RunPassesStandardHandlesWhenThereIsAtLeastOne) {
    const FileHandle file = openInheritable("file");
    for (std::size_t which = 0; which < 4; ++which) {
        std::array<HANDLE, 3> handles{};
        if (which < handles.size())
            handles[which] = file.get();
        {
            const StandardHandles replaced(handles);
            ASSERT_EQ(runProcessAndWait(reporting_, SW_SHOWMINNOACTIVE, "", INFINITE), 0U);
        }
        EXPECT_EQ((readReport().flags & STARTF_USESTDHANDLES) != 0, which < handles.size()) << which;
    }
}

} // namespace
} // namespace base
