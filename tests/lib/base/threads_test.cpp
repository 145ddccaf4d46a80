#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/lib/base/runonthread.h"
#include "tests/support/allocations.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <process.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace {

bool threadsStart = true;

std::uintptr_t beginThreadUnlessRefused(void(__cdecl* function)(void*), unsigned stackSize, void* argument) {
    static const auto original =
        test::platformFunction<decltype(&_beginthread)>("msvcrt.dll", "_beginthread");
    return threadsStart ? original(function, stackSize, argument) : base::threadFailed;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(_beginthread, "__beginthread", beginThreadUnlessRefused);

namespace base {
namespace {

using test::patience;
using test::runOnThread;

TEST(StartThread, CallsTheFunctionWithItsArgumentOnAnotherThread) {
    DWORD thread = 0;
    int argument = 0;
    ASSERT_TRUE(runOnThread([&] {
        thread = GetCurrentThreadId();
        argument = 42;
    }));
    EXPECT_EQ(argument, 42);
    EXPECT_NE(thread, GetCurrentThreadId());
}

TEST(StartThread, PassesANullArgument) {
    static KernelHandle called(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    static void* passed = &called;
    ASSERT_NE(startThread(
                  [](void* argument) {
                      passed = argument;
                      SetEvent(called.get());
                  },
                  nullptr),
              threadFailed);
    ASSERT_EQ(WaitForSingleObject(called.get(), patience), WAIT_OBJECT_0);
    EXPECT_EQ(passed, nullptr);
}

TEST(StartThread, ManyRunSideBySide) {
    static constexpr LONG threads = 20;
    struct Meeting {
        LONG arrived = 0;
        LONG left = 0;
        KernelHandle all{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
        KernelHandle gone{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    } meeting;
    for (LONG i = 0; i < threads; ++i) {
        ASSERT_NE(startThread(
                      [](void* argument) {
                          auto& m = *static_cast<Meeting*>(argument);
                          if (InterlockedIncrement(&m.arrived) == threads)
                              SetEvent(m.all.get());
                          WaitForSingleObject(m.all.get(), patience);
                          if (InterlockedIncrement(&m.left) == threads)
                              SetEvent(m.gone.get());
                      },
                      &meeting),
                  threadFailed);
    }
    // Each waits for the last one, so that they have all been there at once.
    EXPECT_EQ(WaitForSingleObject(meeting.all.get(), patience), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(meeting.gone.get(), patience), WAIT_OBJECT_0);
}

TEST(StartThread, ExceptionEndsTheThreadAlone) {
    EXPECT_TRUE(runOnThread([] { throw std::runtime_error("not for the runtime"); }));
}

TEST(StartThread, WithoutMemoryTheThreadDoesNothing) {
    static bool called = false;
    std::uintptr_t thread = threadFailed;
    {
        const test::RefusedAllocations refused;
        thread = startThread([](void*) { called = true; }, nullptr);
    }
    EXPECT_NE(thread, threadFailed);
    // Signalled, or closed by the runtime already: the thread is over.
    EXPECT_NE(WaitForSingleObject(reinterpret_cast<HANDLE>(thread), patience), DWORD{WAIT_TIMEOUT});
    EXPECT_FALSE(called);
}

TEST(StartThread, FailureLeavesNothingBehind) {
    static bool called = false;
    const std::size_t allocated = test::allocationCount;
    const std::size_t freed = test::deallocationCount;
    threadsStart = false;
    const std::uintptr_t thread = startThread([](void*) { called = true; }, nullptr);
    threadsStart = true;
    EXPECT_EQ(test::allocationCount - allocated, 1U);
    EXPECT_EQ(test::deallocationCount - freed, 1U);
    EXPECT_EQ(thread, threadFailed);
    EXPECT_FALSE(called);
}

} // namespace
} // namespace base
