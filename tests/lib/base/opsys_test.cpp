#include "lib/base/base.h"
#include "lib/base/files.h"
#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/processes.h"
#include "lib/base/stackalignment.h"
#include "lib/base/threads.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"
#include "tests/support/startedprocess.h"

#include <windows.h>

#include <objbase.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

/// The program's file, when a test says so.
std::string simulatedPath;

int componentLibraryClosings = 0;

DWORD WINAPI fileNameToTell(HMODULE module, LPSTR buffer, DWORD size) {
    static const auto original =
        test::platformFunction<decltype(&GetModuleFileNameA)>("kernel32.dll", "GetModuleFileNameA");
    if (simulatedPath.empty())
        return original(module, buffer, size);
    const std::size_t copied = simulatedPath.copy(buffer, size);
    if (copied < size)
        buffer[copied] = '\0';
    return static_cast<DWORD>(copied);
}

void WINAPI countedCoUninitialize() {
    static const auto original =
        test::platformFunction<decltype(&CoUninitialize)>("ole32.dll", "CoUninitialize");
    ++componentLibraryClosings;
    original();
}

} // namespace

SCHEDULER_REPLACE_IMPORT(CoUninitialize, "_CoUninitialize@0", countedCoUninitialize);
SCHEDULER_REPLACE_IMPORT(GetModuleFileNameA, "_GetModuleFileNameA@12", fileNameToTell);

namespace base {
namespace {

using test::child;
using test::makeEvent;
using test::patience;
using test::uniqueName;

// --- the program itself

TEST(ModuleHandle, IsTheProgramsAndAlwaysTheSame) {
    EXPECT_EQ(moduleHandle(), GetModuleHandleA(nullptr));
    EXPECT_EQ(moduleHandle(), moduleHandle());
}

TEST(ExecutablePath, IsTheProgramsFile) {
    EXPECT_TRUE(isDrivePath(executablePath()));
    EXPECT_EQ(fileNameOf(executablePath()), "lib.base.opsys.tests.exe");
    EXPECT_TRUE(fileExists(executablePath()));
}

TEST(ExecutablePath, MayBeLong) {
    for (const std::size_t length : {259U, 260U, 261U, 520U, 30'000U}) {
        simulatedPath = "C:\\" + std::string(length - 3, 'x');
        const std::string path = executablePath();
        EXPECT_EQ(path, simulatedPath) << length;
    }
    simulatedPath.clear();
}

TEST(StartComponentLibrary, MakesComponentsAvailableUntilTheProgramsExit) {
    // Runs after what is registered behind it.
    std::atexit([] {
        if (componentLibraryClosings != 1) {
            std::fprintf(stderr, "The component library was closed %d times.\n", componentLibraryClosings);
            std::_Exit(1);
        }
    });
    const CLSID nobody{};
    void* component = nullptr;
    const auto create = [&] {
        return CoCreateInstance(nobody, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &component);
    };
    ASSERT_EQ(create(), CO_E_NOTINITIALIZED);
    startComponentLibrary();
    EXPECT_EQ(create(), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(CoInitialize(nullptr), S_FALSE) << "done already, and for a single-threaded apartment";
    CoUninitialize();
    EXPECT_EQ(componentLibraryClosings, 1) << "by this test";
    componentLibraryClosings = 0;
}

// --- the single instance

TEST(CreateInstanceMutex, TellsTheSecondFromTheFirst) {
    const std::string name = uniqueName("instance");
    EXPECT_FALSE(createInstanceMutex(name));
    EXPECT_TRUE(createInstanceMutex(name));
    EXPECT_TRUE(createInstanceMutex(name));
    EXPECT_FALSE(createInstanceMutex(uniqueName("instance")));
}

TEST(CreateInstanceMutex, HoldsTheMutexForOtherProcesses) {
    const std::string name = uniqueName("instance");
    EXPECT_EQ(runProcessAndWait(child("has-mutex " + name), SW_HIDE, "", INFINITE), 0U);
    ASSERT_FALSE(createInstanceMutex(name));
    EXPECT_EQ(runProcessAndWait(child("has-mutex " + name), SW_HIDE, "", INFINITE), 1U);
}

TEST(CreateInstanceMutex, OwnsTheMutex) {
    const std::string name = uniqueName("instance");
    ASSERT_FALSE(createInstanceMutex(name));
    static KernelHandle mutex;
    mutex.reset(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str()));
    ASSERT_TRUE(mutex);
    // Whoever owns it may take it again; another thread may not.
    static DWORD result = WAIT_FAILED;
    static KernelHandle over = makeEvent(false);
    ASSERT_NE(startThread(
                  [](void*) {
                      result = WaitForSingleObject(mutex.get(), 0);
                      SetEvent(over.get());
                  },
                  nullptr),
              threadFailed);
    ASSERT_EQ(WaitForSingleObject(over.get(), patience), WAIT_OBJECT_0);
    EXPECT_EQ(result, DWORD{WAIT_TIMEOUT});
}

TEST(CreateInstanceMutex, FailureIsNoOtherInstance) {
    const std::string name = uniqueName("not-a-mutex");
    const KernelHandle event = makeEvent(false, name.c_str());
    EXPECT_FALSE(createInstanceMutex(name)) << "an event has the name already";
}

TEST(IsAnotherInstanceRunning, AsksForTheMakersAndTheProgramsNames) {
    const std::string title = applicationName;
    applicationName = uniqueName("Title with blanks");
    const std::string name = "Brindlewood " + applicationName;
    EXPECT_FALSE(isAnotherInstanceRunning());
    EXPECT_TRUE(KernelHandle(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str())));
    EXPECT_TRUE(isAnotherInstanceRunning());
    applicationName = title;
}

// --- windows' texts

class WindowTextTest : public testing::Test {
protected:
    ~WindowTextTest() override {
        if (window_)
            DestroyWindow(window_);
    }
    HWND window_ = CreateWindowExA(0, "EDIT", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(WindowTextTest, IsEmptyForAWindowWithoutText) {
    ASSERT_NE(window_, nullptr);
    EXPECT_EQ(windowText(window_), "");
}

TEST_F(WindowTextTest, IsTheWholeText) {
    ASSERT_NE(window_, nullptr);
    for (const std::string& text : {std::string("x"), std::string("two words"), std::string(3000, 't')}) {
        ASSERT_TRUE(SetWindowTextA(window_, text.c_str()));
        EXPECT_EQ(windowText(window_), text);
    }
    ASSERT_TRUE(SetWindowTextA(window_, ""));
    EXPECT_EQ(windowText(window_), "");
}

TEST_F(WindowTextTest, IsEmptyForNoWindow) {
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

TEST(WindowText, HasTheLengthThatTheWindowTold) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = boastingWindow;
    windowClass.hInstance = moduleHandle();
    windowClass.lpszClassName = "BoastingWindow";
    ASSERT_NE(RegisterClassA(&windowClass), 0);
    const HWND window = CreateWindowExA(0, "BoastingWindow", "text", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                        nullptr, nullptr);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(windowText(window), std::string("text") + std::string(6, '\0'));
    SetPropA(window, "huge", window);
    EXPECT_EQ(windowText(window), "") << "no memory for it";
    RemovePropA(window, "huge");
    DestroyWindow(window);
    UnregisterClassA("BoastingWindow", moduleHandle());
}

} // namespace
} // namespace base
