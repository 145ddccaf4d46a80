#include "lib/base/base.h"
#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "lib/base/stackalignment.h"
#include "tests/support/runonthread.h"
#include "tests/support/startedprocess.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace base {
namespace {

using test::uniqueName;

class OpSys : public testing::Test {
protected:
    ~OpSys() override {
        if (window_)
            DestroyWindow(window_);
    }

    HWND window_ = CreateWindowExA(0, "EDIT", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(OpSys, ModuleAndExecutableAreTheProgramsOwn) {
    EXPECT_EQ(moduleHandle(), GetModuleHandleA(nullptr));
    EXPECT_TRUE(isDrivePath(executablePath()));
    EXPECT_TRUE(fileNameOf(executablePath()).starts_with("lib.base")) << executablePath();
    EXPECT_TRUE(fileExists(executablePath()));
}

// The single instance

TEST_F(OpSys, InstanceMutexTellsTheSecondFromTheFirst) {
    const std::string name = uniqueName("instance");
    EXPECT_FALSE(createInstanceMutex(name));
    EXPECT_TRUE(createInstanceMutex(name));
    EXPECT_TRUE(createInstanceMutex(name));
    EXPECT_FALSE(createInstanceMutex(uniqueName("instance")));
}

TEST_F(OpSys, InstanceMutexIsHeldForOtherProcessesAndOwned) {
    const std::string name = uniqueName("instance");
    EXPECT_EQ(runProcessAndWait(test::child("has-mutex " + name), SW_HIDE, "", INFINITE), 0U);
    ASSERT_FALSE(createInstanceMutex(name));
    EXPECT_EQ(runProcessAndWait(test::child("has-mutex " + name), SW_HIDE, "", INFINITE), 1U);
    const KernelHandle mutex(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str()));
    ASSERT_TRUE(mutex);
    DWORD result = WAIT_FAILED;
    ASSERT_TRUE(test::runOnThread([&] { result = WaitForSingleObject(mutex.get(), 0); }));
    EXPECT_EQ(result, DWORD{WAIT_TIMEOUT}) << "another thread cannot take it";
}

TEST_F(OpSys, InstanceMutexThatCannotBeMadeIsNoOtherInstance) {
    const std::string name = uniqueName("not-a-mutex");
    const KernelHandle event = test::makeEvent(false, name.c_str());
    EXPECT_FALSE(createInstanceMutex(name));
}

TEST_F(OpSys, AnotherInstanceIsKnownByTheMakersAndTheProgramsNames) {
    const std::string title = applicationName;
    applicationName = uniqueName("Title with blanks");
    const std::string name = "Brindlewood " + applicationName;
    EXPECT_FALSE(isAnotherInstanceRunning());
    EXPECT_TRUE(KernelHandle(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str())));
    EXPECT_TRUE(isAnotherInstanceRunning());
    applicationName = title;
}

// The texts of windows

TEST_F(OpSys, WindowTextIsTheWholeText) {
    ASSERT_NE(window_, nullptr);
    for (const std::string& text :
         {std::string(), std::string("x"), std::string("two words"), std::string(3000, 't'), std::string()}) {
        ASSERT_TRUE(SetWindowTextA(window_, text.c_str()));
        EXPECT_EQ(windowText(window_), text);
    }
}

TEST_F(OpSys, WindowTextOfNoWindowIsEmpty) {
    EXPECT_EQ(windowText(nullptr), "");
    const HWND destroyed = window_;
    DestroyWindow(window_);
    window_ = nullptr;
    EXPECT_EQ(windowText(destroyed), "");
}

/// Claims more text than can be had, or than it then gives.
CALLED_BY_PLATFORM LRESULT CALLBACK boastingWindow(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETTEXTLENGTH)
        return GetPropA(window, "huge") ? 0x7FFFFFFE : 10;
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(OpSys, WindowTextHasTheLengthThatTheWindowTold) {
    SetWindowLongA(window_, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<LONG_PTR>(boastingWindow)));
    ASSERT_TRUE(SetWindowTextA(window_, "text"));
    EXPECT_EQ(windowText(window_), std::string("text") + std::string(6, '\0'));
    SetPropA(window_, "huge", window_);
    EXPECT_EQ(windowText(window_), "") << "no memory for it";
    RemovePropA(window_, "huge");
}

// Errors

TEST_F(OpSys, AnErrorHasTheSystemsText) {
    const std::string text = systemErrorText(ERROR_ACCESS_DENIED);
    EXPECT_TRUE(text.starts_with("Access ") && text.find("denied") != std::string::npos) << text;
    EXPECT_GT(text.back(), ' ') << "no line break";
}

} // namespace
} // namespace base
