// How the platform is asked for processes, threads, the mutex and components; what follows from its refusals;
// and what is given back at the program's exit.

#include "lib/base/handles.h"
#include "lib/base/opsys.h"
#include "lib/base/processes.h"
#include "lib/base/threads.h"
#include "tests/support/allocations.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/patience.h"
#include "tests/support/startedprocess.h"

#include <windows.h>

#include <objbase.h>
#include <process.h>

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::string simulatedPath; ///< of the program's file; empty: the platform's
bool threadFails = false;
unsigned lastStackSize = 1;
int componentClosings = 0;

DWORD WINAPI tellFileName(HMODULE module, LPSTR buffer, DWORD size) {
    static const auto platform =
        test::platformFunction<decltype(&GetModuleFileNameA)>("kernel32.dll", "GetModuleFileNameA");
    if (simulatedPath.empty())
        return platform(module, buffer, size);
    const std::size_t copied = simulatedPath.copy(buffer, size);
    if (copied < size)
        buffer[copied] = '\0';
    return static_cast<DWORD>(copied);
}

std::uintptr_t beginThread(void(__cdecl* function)(void*), unsigned stackSize, void* argument) {
    static const auto platform =
        test::platformFunction<decltype(&_beginthread)>("msvcrt.dll", "_beginthread");
    lastStackSize = stackSize;
    return threadFails ? base::threadFailed : platform(function, stackSize, argument);
}

void WINAPI closeComponents() {
    static const auto platform =
        test::platformFunction<decltype(&CoUninitialize)>("ole32.dll", "CoUninitialize");
    ++componentClosings;
    platform();
}

/// Looks after all of the program's own variables are gone.
class AfterExit {
public:
    static inline bool usesComponents = false;
    static inline std::size_t withRing = 0; ///< bytes of the program while its ring holds 64 MB

    AfterExit() {}
    ~AfterExit() {
        require(!usesComponents || componentClosings == 1, "the component library is not closed once");
        require(withRing == 0 || test::committedBytes(MEM_PRIVATE) < withRing - (60U << 20),
                "the program's ring of scratch buffers is not freed");
    }

private:
    static void require(bool holds, const char* failure) {
        if (holds)
            return;
        std::fprintf(stderr, "At exit %s.\n", failure);
        std::_Exit(1);
    }
} afterExit [[gnu::init_priority(101)]];

} // namespace

SCHEDULER_STAND_IN("kernel32.dll", CreateProcessA, "_CreateProcessA@40");
SCHEDULER_STAND_IN("kernel32.dll", WaitForSingleObject, "_WaitForSingleObject@8");
SCHEDULER_STAND_IN("kernel32.dll", GetExitCodeProcess, "_GetExitCodeProcess@8");
SCHEDULER_STAND_IN("kernel32.dll", CreateMutexA, "_CreateMutexA@12");
SCHEDULER_STAND_IN("ole32.dll", CoInitialize, "_CoInitialize@4");
SCHEDULER_REPLACE_IMPORT(GetModuleFileNameA, "_GetModuleFileNameA@12", tellFileName);
SCHEDULER_REPLACE_IMPORT(_beginthread, "__beginthread", beginThread);
SCHEDULER_REPLACE_IMPORT(CoUninitialize, "_CoUninitialize@0", closeComponents);

namespace base {
namespace {

using test::child;

TEST(SystemCalls, ExecutablePathMayBeLong) {
    for (const std::size_t length : {259U, 260U, 261U, 520U, 30'000U}) {
        simulatedPath = "C:\\" + std::string(length - 3, 'x');
        const std::string path = executablePath();
        EXPECT_EQ(path, simulatedPath) << length;
    }
    simulatedPath.clear();
}

TEST(SystemCalls, MutexThatIsRefusedIsNoOtherInstance) {
    platform::CreateMutexA.note = [](auto...) { SetLastError(ERROR_ALREADY_EXISTS); };
    platform::CreateMutexA.answer = nullptr;
    EXPECT_FALSE(createInstanceMutex(test::uniqueName("refused")));
}

TEST(SystemCalls, ComponentLibraryIsClosedAtExitUnlessItWasRefused) {
    const CLSID nobody{};
    void* component = nullptr;
    const auto create = [&] {
        return CoCreateInstance(nobody, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &component);
    };
    platform::CoInitialize.answer = E_OUTOFMEMORY;
    startComponentLibrary();
    platform::CoInitialize.answer.reset();
    ASSERT_EQ(create(), CO_E_NOTINITIALIZED);
    startComponentLibrary();
    EXPECT_EQ(create(), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(CoInitialize(nullptr), S_FALSE) << "done already, and for a single-threaded apartment";
    CoUninitialize();
    EXPECT_EQ(componentClosings, 1) << "by this test";
    componentClosings = 0;
    AfterExit::usesComponents = true;
}

TEST(SystemCalls, ProgramsRingIsFreedAtExit) {
    for (int i = 0; i < 16; ++i)
        ASSERT_NE(scratchBuffer(4 << 20), nullptr);
    AfterExit::withRing = test::committedBytes(MEM_PRIVATE);
}

// Processes

TEST(SystemCalls, ProcessIsCreatedWithoutFlagsAndWaitedForAsLongAsTold) {
    static bool isRun;
    static std::vector<DWORD> waits;
    platform::CreateProcessA.note = [](LPCSTR program, LPSTR, LPSECURITY_ATTRIBUTES process,
                                       LPSECURITY_ATTRIBUTES thread, BOOL inheritHandles, DWORD flags,
                                       LPVOID environment, LPCSTR directory, LPSTARTUPINFOA info,
                                       LPPROCESS_INFORMATION) {
        EXPECT_TRUE(!program && !process && !thread && !environment);
        EXPECT_EQ(inheritHandles != FALSE, isRun);
        EXPECT_EQ(flags, 0U);
        EXPECT_EQ(directory != nullptr, isRun);
        EXPECT_EQ(info->cb, 68U);
    };
    platform::WaitForSingleObject.note = [](HANDLE, DWORD milliseconds) { waits.push_back(milliseconds); };
    isRun = false;
    EXPECT_TRUE(startProcess(child("exit 3"), SW_HIDE, ""));
    isRun = true;
    EXPECT_EQ(runProcessAndWait(child("exit 3"), SW_HIDE, "C:\\", INFINITE), 3U);
    platform::CreateProcessA.note = nullptr;
    platform::WaitForSingleObject.note = nullptr;
    EXPECT_FALSE(waits.empty());
    EXPECT_THAT(waits, testing::Each(DWORD{INFINITE}));
}

TEST(SystemCalls, ProcessThatIsRefusedWithoutAnErrorCountsAsStarted) {
    static DWORD error;
    platform::CreateProcessA.note = [](auto...) { SetLastError(error); };
    platform::CreateProcessA.answer = FALSE;
    for (const bool counts : {true, false}) {
        error = counts ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
        EXPECT_EQ(startProcess(child("exit 0"), SW_HIDE, ""), counts);
        // There is no process to wait for.
        EXPECT_EQ(runProcessAndWait(child("exit 0"), SW_HIDE, "", INFINITE), processFailed);
    }
    platform::CreateProcessA.note = nullptr;
    platform::CreateProcessA.answer.reset();
}

TEST(SystemCalls, ProcessThatCannotBeWaitedForFailsAndItsHandlesStayOpen) {
    const auto run = [] {
        platform::WaitForSingleObject.answer = WAIT_FAILED;
        const std::uint32_t result = runProcessAndWait(child("exit 3"), SW_HIDE, "", INFINITE);
        platform::WaitForSingleObject.answer.reset();
        return result;
    };
    EXPECT_EQ(run(), processFailed);
    const unsigned before = test::handleCount();
    EXPECT_EQ(run(), processFailed);
    EXPECT_EQ(test::handleCount(), before + 2) << "the process's and its thread's";
}

TEST(SystemCalls, ProcessWhoseExitCodeIsNotToldGives0) {
    platform::GetExitCodeProcess.answer = FALSE;
    EXPECT_EQ(runProcessAndWait(child("exit 3"), SW_HIDE, "", INFINITE), 0U);
    platform::GetExitCodeProcess.answer.reset();
}

// Threads

bool called = false;

TEST(SystemCalls, ThreadHasTheDefaultStackAndDoesNothingWithoutMemory) {
    std::uintptr_t thread = threadFailed;
    {
        const test::RefusedAllocations refused;
        thread = startThread([](void*) { called = true; }, nullptr);
    }
    EXPECT_EQ(lastStackSize, 0U);
    EXPECT_NE(thread, threadFailed);
    // Signalled, or closed by the runtime already: the thread is over.
    EXPECT_NE(WaitForSingleObject(reinterpret_cast<HANDLE>(thread), test::patience), DWORD{WAIT_TIMEOUT});
    EXPECT_FALSE(called);
}

TEST(SystemCalls, ThreadThatIsRefusedLeavesNothingBehind) {
    const std::size_t allocated = test::allocationCount;
    const std::size_t freed = test::deallocationCount;
    threadFails = true;
    const std::uintptr_t thread = startThread([](void*) { called = true; }, nullptr);
    threadFails = false;
    EXPECT_EQ(test::allocationCount - allocated, 1U);
    EXPECT_EQ(test::deallocationCount - freed, 1U);
    EXPECT_EQ(thread, threadFailed);
    EXPECT_FALSE(called);
}

} // namespace
} // namespace base
