#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/lib/base/runonthread.h"
#include "tests/support/memoryuse.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <malloc.h>
#include <string>
#include <vector>

namespace base {
namespace {

using test::committedBytes;
using test::patience;
using test::runOnThread;

/// Allocations that `work` makes in all rings.
std::uint32_t allocationsOf(const std::function<void()>& work) {
    const std::uint32_t before = scratchAllocationCount();
    work();
    return scratchAllocationCount() - before;
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
