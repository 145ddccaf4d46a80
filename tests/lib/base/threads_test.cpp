#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/support/allocations.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <process.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <vector>

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

using test::committedBytes;
using test::patience;

/// Allocations that `work` makes in all rings.
std::uint32_t allocationsOf(const std::function<void()>& work) {
    const std::uint32_t before = scratchAllocationCount();
    work();
    return scratchAllocationCount() - before;
}

/// Runs `work` on a thread of startThread and waits until that thread is gone, its ring with it.
bool runOnThread(const std::function<void()>& work) {
    struct Call {
        const std::function<void()>& work;
        KernelHandle started{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
        KernelHandle thread{};
    } call{work};
    const std::uintptr_t result = startThread(
        [](void* argument) {
            auto& c = *static_cast<Call*>(argument);
            // The runtime closes its own handle as soon as the thread ends, so the test needs one more.
            DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), c.thread.receive(),
                            0, FALSE, DUPLICATE_SAME_ACCESS);
            SetEvent(c.started.get());
            c.work();
        },
        &call);
    return result != threadFailed && WaitForSingleObject(call.started.get(), patience) == WAIT_OBJECT_0 &&
           WaitForSingleObject(call.thread.get(), patience) == WAIT_OBJECT_0;
}

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

TEST(ScratchRing, HandsOutSixteenBuffersInTurn) {
    ScratchRing ring;
    std::vector<void*> buffers;
    for (int i = 0; i < 16; ++i)
        buffers.push_back(ring.buffer(10));
    EXPECT_THAT(buffers, testing::Each(testing::NotNull()));
    std::vector<void*> unique = buffers;
    std::sort(unique.begin(), unique.end());
    EXPECT_EQ(std::unique(unique.begin(), unique.end()), unique.end());
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(ring.buffer(10), buffers[static_cast<std::size_t>(i)]) << i;
}

TEST(ScratchRing, BufferStaysAsItIsWhileFifteenMoreAreAskedFor) {
    ScratchRing ring;
    auto* const first = static_cast<char*>(ring.buffer(100));
    std::memset(first, 'a', 100);
    for (int i = 0; i < 15; ++i)
        std::memset(ring.buffer(100), 'b', 100);
    EXPECT_EQ(std::string(first, 100), std::string(100, 'a'));
}

TEST(ScratchRing, KeepsABufferOrMakesANewOneBySize) {
    const struct {
        std::size_t first;
        std::size_t second;
        bool kept;
    } rows[] = {
        {10, 10, true},      {10, 9, true},       {10, 0, true},       {10, 11, false},    {2048, 1, true},
        {2048, 2048, true},  {2048, 2049, false}, {2049, 1366, true}, // 1366 + 683 = 2049
        {2049, 1365, false},                                          // 1365 + 682 = 2047
        {2049, 1, false},    {2049, 0, false},    {3000, 3000, true},  {3000, 2500, true}, {3000, 2000, true},
        {3000, 1999, false}, {3000, 1000, false}, {3000, 3001, false}, {0, 0, true},       {0, 1, false},
    };
    for (const auto& row : rows) {
        ScratchRing ring;
        ring.buffer(row.first);
        for (int i = 0; i < 15; ++i)
            ring.buffer(1);
        EXPECT_EQ(allocationsOf([&] { ring.buffer(row.second); }), row.kept ? 0U : 1U)
            << row.first << ", then " << row.second;
    }
}

TEST(ScratchRing, ReplacedBufferIsOfTheSizeAskedFor) {
    ScratchRing ring;
    const auto inSlot0 = [&](std::size_t size) {
        const std::uint32_t allocations = allocationsOf([&] { ring.buffer(size); });
        for (int i = 0; i < 15; ++i)
            ring.buffer(1);
        return allocations;
    };
    EXPECT_EQ(inSlot0(3000), 1U);
    EXPECT_EQ(inSlot0(1000), 1U);
    EXPECT_EQ(inSlot0(1000), 0U);
    EXPECT_EQ(inSlot0(1001), 1U); // exactly 1000 bytes had been allocated
}

constexpr std::size_t tooMuch = 0xFFFFFFF0;

TEST(ScratchRing, FailedAllocationGivesNullAndSpoilsNothing) {
    ScratchRing ring;
    auto* const first = static_cast<char*>(ring.buffer(10));
    ASSERT_NE(first, nullptr);
    std::memset(first, 'a', 10);
    for (int i = 0; i < 15; ++i)
        EXPECT_EQ(ring.buffer(tooMuch), nullptr);
    EXPECT_EQ(std::string(first, 10), std::string(10, 'a'));
    EXPECT_EQ(ring.buffer(10), first);
    // The slots whose allocation failed serve those who ask for much less.
    for (int i = 0; i < 15; ++i) {
        void* const buffer = ring.buffer(i % 2 ? 100 : 5000);
        ASSERT_NE(buffer, nullptr);
        std::memset(buffer, 'b', i % 2 ? 100 : 5000);
    }
    EXPECT_EQ(ring.buffer(tooMuch), nullptr);
    for (int i = 0; i < 15; ++i)
        ring.buffer(1);
    EXPECT_NE(ring.buffer(10), nullptr);
}

TEST(ScratchRing, AllocatesExactlyWhatIsAskedFor) {
    ScratchRing ring;
    for (const std::size_t size : {1U, 10U, 2048U, 2049U, 100'001U})
        EXPECT_EQ(_msize(ring.buffer(size)), size);
}

TEST(ScratchRing, ReplacedBuffersAreFreed) {
    constexpr std::size_t megabyte = 1 << 20;
    ScratchRing ring;
    const auto replaceAll = [&ring] {
        for (const std::size_t size : {8 * megabyte, megabyte})
            for (int i = 0; i < 16; ++i)
                ASSERT_NE(ring.buffer(size), nullptr);
    };
    replaceAll();
    const std::size_t before = committedBytes(MEM_PRIVATE);
    for (int i = 0; i < 5; ++i)
        replaceAll();
    EXPECT_LT(committedBytes(MEM_PRIVATE), before + 8 * megabyte);
}

TEST(ScratchRing, SlotWhoseAllocationFailedIsKeptAsOneOfThatSize) {
    const struct {
        std::size_t second;
        std::uint32_t allocations;
    } rows[] = {
        {tooMuch, 0}, // null again, without asking the heap
        {tooMuch / 6 * 5, 0},
        {tooMuch + 1, 1},
        {10, 1},
    };
    for (const auto& row : rows) {
        ScratchRing ring;
        EXPECT_EQ(ring.buffer(tooMuch), nullptr);
        for (int i = 0; i < 15; ++i)
            ring.buffer(1);
        void* buffer = nullptr;
        EXPECT_EQ(allocationsOf([&] { buffer = ring.buffer(row.second); }), row.allocations) << row.second;
        EXPECT_EQ(buffer != nullptr, row.second == 10) << row.second;
    }
}

TEST(ScratchRing, FailedAllocationIsCountedToo) {
    ScratchRing ring;
    EXPECT_EQ(allocationsOf([&] { EXPECT_EQ(ring.buffer(tooMuch), nullptr); }), 1U);
}

TEST(ScratchRing, StartsAfreshWhenCleared) {
    ScratchRing ring;
    for (int i = 0; i < 5; ++i)
        ring.buffer(10);
    ring.clear();
    EXPECT_EQ(allocationsOf([&] {
                  for (int i = 0; i < 16; ++i)
                      EXPECT_NE(ring.buffer(10), nullptr);
              }),
              16U);
    ring.clear();
    ring.clear();
}

TEST(ScratchBuffer, SeventeenthBufferIsTheFirstAgain) {
    void* const first = scratchBuffer(10);
    for (int i = 0; i < 15; ++i)
        EXPECT_NE(scratchBuffer(10), first) << i;
    EXPECT_EQ(scratchBuffer(10), first);
    for (int i = 0; i < 15; ++i) // back to the slot where this test began
        scratchBuffer(10);
}

TEST(ScratchBuffer, LargeBufferGoesForARequestOfAThirdAndStaysForOneOfFiveSixths) {
    ASSERT_TRUE(runOnThread([] {
        void* const large = scratchBuffer(3000);
        for (int i = 0; i < 15; ++i)
            scratchBuffer(1);
        EXPECT_EQ(allocationsOf([&] { EXPECT_EQ(scratchBuffer(2500), large); }), 0U);
        for (int i = 0; i < 15; ++i)
            scratchBuffer(1);
        EXPECT_EQ(allocationsOf([] { EXPECT_NE(scratchBuffer(1000), nullptr); }), 1U);
    }));
}

TEST(ScratchBuffer, EachThreadHasItsOwnRing) {
    std::array<void*, 16> mine{};
    for (void*& buffer : mine) {
        buffer = scratchBuffer(100);
        std::memset(buffer, 'm', 100);
    }
    ASSERT_TRUE(runOnThread([&] {
        const std::uint32_t allocations = allocationsOf([&] {
            for (int i = 0; i < 16; ++i) {
                void* const theirs = scratchBuffer(100);
                EXPECT_THAT(mine, testing::Not(testing::Contains(theirs)));
                std::memset(theirs, 't', 100);
            }
        });
        EXPECT_EQ(allocations, 16U); // empty at the thread's start
    }));
    for (void* const buffer : mine) {
        EXPECT_EQ(std::string(static_cast<const char*>(buffer), 100), std::string(100, 'm'));
        EXPECT_EQ(scratchBuffer(100), buffer); // nor did the other thread move the ring on
    }
}

TEST(ScratchBuffer, RingOfANewThreadIsEmptyEachTime) {
    for (int round = 0; round < 3; ++round) {
        std::uint32_t allocations = 0;
        ASSERT_TRUE(runOnThread([&] { allocations = allocationsOf([] { scratchBuffer(500); }); }));
        EXPECT_EQ(allocations, 1U) << round;
    }
}

TEST(ScratchBuffer, BuffersAreFreedWithTheirThread) {
    constexpr std::size_t megabyte = 1 << 20;
    const auto useMuch = [] {
        for (int i = 0; i < 16; ++i)
            ASSERT_NE(scratchBuffer(4 * megabyte), nullptr);
    };
    ASSERT_TRUE(runOnThread(useMuch));
    const std::size_t before = committedBytes(MEM_PRIVATE);
    std::size_t during = 0;
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(runOnThread([&] {
            useMuch();
            during = committedBytes(MEM_PRIVATE);
        }));
    }
    EXPECT_GE(during, before + 60 * megabyte);
    EXPECT_LT(committedBytes(MEM_PRIVATE), before + 4 * megabyte);
}

DWORD WINAPI otherThread(void* buffer) {
    *static_cast<void**>(buffer) = scratchBuffer(10);
    return 0;
}

TEST(ScratchBuffer, ThreadsThatWereStartedOtherwiseShareTheMainThreadsRing) {
    void* const mine = scratchBuffer(10);
    for (int i = 0; i < 15; ++i)
        scratchBuffer(10);
    void* theirs = nullptr;
    const KernelHandle thread(CreateThread(nullptr, 0, otherThread, &theirs, 0, nullptr));
    ASSERT_TRUE(thread);
    ASSERT_EQ(WaitForSingleObject(thread.get(), patience), WAIT_OBJECT_0);
    EXPECT_EQ(theirs, mine);
}

} // namespace
} // namespace base
