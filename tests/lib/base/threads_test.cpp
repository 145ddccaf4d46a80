#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/support/allocations.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/memoryuse.h"
#include "tests/support/runonthread.h"
#include "tests/support/timeout.h"

#include <windows.h>

#include <process.h>

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <malloc.h>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

SCHEDULER_STAND_IN("msvcrt.dll", _beginthread, "__beginthread");

namespace {

/// Its destructor runs after those of all other static variables.
struct AfterExit {
    std::size_t withRing = 0; ///< committed bytes while the ring holds 64 MB

    ~AfterExit() {
        if (withRing == 0 || test::committedBytes(MEM_PRIVATE) < withRing - (60U << 20))
            return;
        std::fprintf(stderr, "The main thread's ring of scratch buffers was not freed at exit.\n");
        std::_Exit(1);
    }
} afterExit [[gnu::init_priority(101)]];

} // namespace

namespace base {
namespace {

using namespace test;

constexpr std::size_t megabyte = 1 << 20;
constexpr std::size_t tooMuch = 0xFFFFFFF0;

bool called = false;

TEST(Threads, ThreadHasTheDefaultStackAndDoesNothingWithoutMemory) {
    static unsigned stackSize = 1;
    platform::_beginthread.onCall = [](auto, unsigned size, void*) { stackSize = size; };
    std::uintptr_t thread = threadFailed;
    {
        const test::RefusedAllocations refused;
        thread = startThread([](void*) { called = true; }, nullptr);
    }
    EXPECT_EQ(stackSize, 0U);
    EXPECT_NE(thread, threadFailed);
    // The runtime may have closed the handle, so any result but a timeout means that the thread ended.
    EXPECT_NE(WaitForSingleObject(reinterpret_cast<HANDLE>(thread), timeout), DWORD{WAIT_TIMEOUT});
    EXPECT_FALSE(called);
}

TEST(Threads, RefusedThreadLeaksNothing) {
    const std::size_t allocated = test::allocationCount;
    const std::size_t freed = test::deallocationCount;
    platform::_beginthread.answer = threadFailed;
    const std::uintptr_t thread = startThread([](void*) { called = true; }, nullptr);
    platform::_beginthread.answer.reset();
    EXPECT_EQ(test::allocationCount - allocated, 1U);
    EXPECT_EQ(test::deallocationCount - freed, 1U);
    EXPECT_EQ(thread, threadFailed);
    EXPECT_FALSE(called);
}

TEST(Threads, ExceptionEndsOnlyItsThread) {
    EXPECT_TRUE(runOnThread([] { throw std::runtime_error("not for the runtime"); }));
}

std::uint32_t allocationsOf(const std::function<void()>& work) {
    const std::uint32_t before = scratchAllocationCount();
    work();
    return scratchAllocationCount() - before;
}

/// The ring has 16 slots.
void advanceBy15(ScratchRing& ring) {
    for (int i = 0; i < 15; ++i)
        ring.buffer(1);
}

TEST(Threads, RingCyclesThrough16Buffers) {
    ScratchRing ring;
    std::vector<void*> buffers;
    for (char i = 0; i < 16; ++i) {
        buffers.push_back(ring.buffer(100));
        std::memset(buffers.back(), i, 100);
    }
    EXPECT_EQ(std::set<void*>(buffers.begin(), buffers.end()).size(), 16U);
    for (char i = 0; i < 16; ++i) {
        void* const buffer = ring.buffer(100);
        EXPECT_EQ(buffer, buffers[static_cast<std::size_t>(i)]);
        EXPECT_EQ(std::string(static_cast<char*>(buffer), 100), std::string(100, i)) << "the content changed";
    }
}

std::size_t sizeOf(void* buffer) {
    return buffer ? _msize(buffer) : 0; // an unused slot counts as size 0
}

TEST(Threads, RingReusesABufferOrReplacesItWithTheRequestedSize) {
    const struct {
        std::size_t first, second;
        bool kept;
    } rows[] = {{10, 10, true},      {10, 0, true},       {10, 11, false},     {2048, 1, true},
                {2048, 2049, false}, {2049, 1366, true},  {2049, 1365, false}, {2049, 0, false},
                {3000, 2000, true},  {3000, 1999, false}, {3000, 3001, false}, {0, 0, true},
                {0, 1, false}};
    for (const auto& [first, second, kept] : rows) {
        SCOPED_TRACE(std::to_string(first) + ", then " + std::to_string(second));
        ScratchRing ring;
        void* const before = ring.buffer(first);
        EXPECT_EQ(sizeOf(before), first);
        advanceBy15(ring);
        void* buffer = nullptr;
        EXPECT_EQ(allocationsOf([&] { buffer = ring.buffer(second); }), kept ? 0U : 1U);
        EXPECT_EQ(sizeOf(buffer), kept ? first : second);
    }
}

TEST(Threads, RingRemembersAFailedAllocationAsABufferOfThatSize) {
    const struct {
        std::size_t second;
        std::uint32_t allocations;
    } rows[] = {{tooMuch, 0}, {tooMuch / 6 * 5, 0}, {tooMuch + 1, 1}, {10, 1}, {5000, 1}};
    for (const auto& [second, allocations] : rows) {
        ScratchRing ring;
        EXPECT_EQ(allocationsOf([&] { EXPECT_EQ(ring.buffer(tooMuch), nullptr); }), 1U);
        advanceBy15(ring);
        void* buffer = nullptr;
        EXPECT_EQ(allocationsOf([&] { buffer = ring.buffer(second); }), allocations) << second;
        EXPECT_EQ(buffer != nullptr, second <= 5000) << second;
    }
}

TEST(Threads, RingKeepsItsOtherBuffersAfterAFailedAllocation) {
    ScratchRing ring;
    auto* const first = static_cast<char*>(ring.buffer(10));
    std::memset(first, 'a', 10);
    for (int i = 0; i < 15; ++i)
        EXPECT_EQ(ring.buffer(tooMuch), nullptr);
    EXPECT_EQ(ring.buffer(10), first);
    EXPECT_EQ(std::string(first, 10), std::string(10, 'a'));
}

TEST(Threads, RingFreesReplacedBuffers) {
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

TEST(Threads, ClearedRingIsEmpty) {
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

TEST(Threads, EachThreadStartsWithItsOwnEmptyRing) {
    std::array<void*, 16> mine{};
    for (void*& buffer : mine) {
        buffer = scratchBuffer(100);
        std::memset(buffer, 'm', 100);
    }
    for (int round = 0; round < 2; ++round)
        ASSERT_TRUE(runOnThread([&] {
            EXPECT_EQ(allocationsOf([&] {
                          for (int i = 0; i < 16; ++i) {
                              void* const theirs = scratchBuffer(100);
                              EXPECT_THAT(mine, testing::Not(testing::Contains(theirs)));
                              std::memset(theirs, 't', 100);
                          }
                      }),
                      16U);
        }));
    for (void* const buffer : mine) {
        EXPECT_EQ(std::string(static_cast<const char*>(buffer), 100), std::string(100, 'm'));
        EXPECT_EQ(scratchBuffer(100), buffer) << "another thread advanced this ring";
    }
}

TEST(Threads, RingIsFreedWithItsThread) {
    std::size_t during = 0;
    const auto useMuch = [&during] {
        for (int i = 0; i < 16; ++i)
            ASSERT_NE(scratchBuffer(4 * megabyte), nullptr);
        during = committedBytes(MEM_PRIVATE);
    };
    ASSERT_TRUE(runOnThread(useMuch));
    const std::size_t before = committedBytes(MEM_PRIVATE);
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(runOnThread(useMuch));
    EXPECT_GE(during, before + 60 * megabyte);
    EXPECT_LT(committedBytes(MEM_PRIVATE), before + 4 * megabyte);
}

DWORD WINAPI otherThread(void* buffer) {
    *static_cast<void**>(buffer) = scratchBuffer(10);
    return 0;
}

TEST(Threads, ForeignThreadsShareTheMainThreadsRing) {
    void* const mine = scratchBuffer(10);
    for (int i = 0; i < 15; ++i)
        scratchBuffer(10);
    void* theirs = nullptr;
    const KernelHandle thread(CreateThread(nullptr, 0, otherThread, &theirs, 0, nullptr));
    ASSERT_TRUE(thread);
    ASSERT_EQ(WaitForSingleObject(thread.get(), timeout), WAIT_OBJECT_0);
    EXPECT_EQ(theirs, mine);
}

TEST(Threads, MainThreadsRingIsFreedAtExit) {
    for (int i = 0; i < 16; ++i)
        ASSERT_NE(scratchBuffer(4 * megabyte), nullptr);
    afterExit.withRing = test::committedBytes(MEM_PRIVATE);
}

} // namespace
} // namespace base
