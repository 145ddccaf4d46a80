#include "lib/base/base.h"
#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/stackalignment.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/runonthread.h"

#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

SCHEDULER_STAND_IN("kernel32.dll", CreateMutexA, "_CreateMutexA@12");
SCHEDULER_STAND_IN("ole32.dll", CoInitialize, "_CoInitialize@4");
SCHEDULER_STAND_IN("ole32.dll", CoUninitialize, "_CoUninitialize@0");

namespace {

std::string simulatedPath; ///< executable path; empty for the real one

DWORD WINAPI simulatedFileName(HMODULE module, LPSTR buffer, DWORD size) {
    static const auto platform =
        test::platformFunction<decltype(&GetModuleFileNameA)>("kernel32.dll", "GetModuleFileNameA");
    if (simulatedPath.empty())
        return platform(module, buffer, size);
    const std::size_t copied = simulatedPath.copy(buffer, size);
    if (copied < size)
        buffer[copied] = '\0';
    return static_cast<DWORD>(copied);
}

/// Its destructor runs after those of all other static variables.
struct AfterExit {
    bool usesComponents = false;

    ~AfterExit() {
        if (!usesComponents || platform::CoUninitialize.calls == 1)
            return;
        std::fprintf(stderr, "The component library was not closed exactly once at exit.\n");
        std::_Exit(1);
    }
} afterExit [[gnu::init_priority(101)]];

} // namespace

SCHEDULER_REPLACE_IMPORT(GetModuleFileNameA, "_GetModuleFileNameA@12", simulatedFileName);

namespace base {
namespace {

class OpSys : public testing::Test {
protected:
    ~OpSys() override {
        if (window_)
            DestroyWindow(window_);
    }

    static std::string unique(const std::string& name) {
        return "Brindlewood-test-" + name + std::to_string(GetCurrentProcessId());
    }

    HWND window_ = CreateWindowExA(0, "EDIT", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(OpSys, ModuleAndExecutableBelongToTheProgram) {
    EXPECT_EQ(moduleHandle(), GetModuleHandleA(nullptr));
    EXPECT_TRUE(executablePath().ends_with("\\lib.base.opsys.tests.exe")) << executablePath();
    for (const std::size_t length : {259U, 260U, 261U, 520U, 30'000U}) {
        simulatedPath = "C:\\" + std::string(length - 3, 'x');
        const std::string path = executablePath();
        EXPECT_EQ(path, simulatedPath) << length;
    }
    simulatedPath.clear();
}

TEST_F(OpSys, InstanceMutexIsOwnedAndDetectsASecondInstance) {
    const std::string name = unique("instance");
    EXPECT_FALSE(createInstanceMutex(name));
    EXPECT_TRUE(createInstanceMutex(name));
    EXPECT_TRUE(createInstanceMutex(name));
    EXPECT_FALSE(createInstanceMutex(unique("other")));
    const KernelHandle mutex(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str()));
    ASSERT_TRUE(mutex);
    DWORD result = WAIT_FAILED;
    ASSERT_TRUE(test::runOnThread([&] { result = WaitForSingleObject(mutex.get(), 0); }));
    EXPECT_EQ(result, DWORD{WAIT_TIMEOUT}) << "this thread must own the mutex";
}

TEST_F(OpSys, RefusedInstanceMutexDoesNotCountAsAnotherInstance) {
    const std::string name = unique("not-a-mutex");
    const KernelHandle event(CreateEventA(nullptr, TRUE, FALSE, name.c_str()));
    EXPECT_FALSE(createInstanceMutex(name));
    platform::CreateMutexA.onCall = [](auto...) { SetLastError(ERROR_ALREADY_EXISTS); };
    platform::CreateMutexA.answer = nullptr;
    EXPECT_FALSE(createInstanceMutex(unique("refused")));
    platform::CreateMutexA.onCall = nullptr;
    platform::CreateMutexA.answer.reset();
}

TEST_F(OpSys, InstanceMutexIsNamedAfterTheVendorAndTheProgram) {
    const std::string title = applicationName;
    applicationName = unique("Title with blanks");
    const std::string name = "Brindlewood " + applicationName;
    EXPECT_FALSE(isAnotherInstanceRunning());
    EXPECT_TRUE(KernelHandle(OpenMutexA(SYNCHRONIZE, FALSE, name.c_str())));
    EXPECT_TRUE(isAnotherInstanceRunning());
    applicationName = title;
}

TEST_F(OpSys, ComponentLibraryIsClosedAtExitIfItWasStarted) {
    const CLSID unregistered{};
    void* component = nullptr;
    const auto create = [&] {
        return CoCreateInstance(unregistered, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &component);
    };
    platform::CoInitialize.answer = E_OUTOFMEMORY;
    startComponentLibrary();
    platform::CoInitialize.answer.reset();
    ASSERT_EQ(create(), CO_E_NOTINITIALIZED);
    startComponentLibrary();
    EXPECT_EQ(create(), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(CoInitialize(nullptr), S_FALSE) << "already initialised as a single-threaded apartment";
    CoUninitialize();
    EXPECT_EQ(platform::CoUninitialize.calls.exchange(0), 1) << "only the call in this test";
    afterExit.usesComponents = true;
}

TEST_F(OpSys, WindowTextIsComplete) {
    ASSERT_NE(window_, nullptr);
    for (const std::string& text :
         {std::string(), std::string("two words"), std::string(3000, 't'), std::string()}) {
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

/// Reports a text length greater than the real one, or too large to allocate.
CALLED_BY_PLATFORM LRESULT CALLBACK windowWithWrongLength(HWND window, UINT message, WPARAM wParam,
                                                          LPARAM lParam) {
    if (message == WM_GETTEXTLENGTH)
        return GetPropA(window, "huge") ? 0x7FFFFFFE : 10;
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(OpSys, WindowTextHasTheLengthReportedByTheWindow) {
    SetWindowLongA(window_, GWL_WNDPROC,
                   static_cast<LONG>(reinterpret_cast<LONG_PTR>(windowWithWrongLength)));
    ASSERT_TRUE(SetWindowTextA(window_, "text"));
    EXPECT_EQ(windowText(window_), std::string("text") + std::string(6, '\0'));
    SetPropA(window_, "huge", window_);
    EXPECT_EQ(windowText(window_), "") << "out of memory";
    RemovePropA(window_, "huge");
}

TEST_F(OpSys, ErrorTextComesFromTheSystem) {
    const std::string text = systemErrorText(ERROR_ACCESS_DENIED);
    EXPECT_TRUE(text.starts_with("Access ") && text.find("denied") != std::string::npos) << text;
    EXPECT_GT(text.back(), ' ') << "ends in a line break";
}

} // namespace
} // namespace base
