#include "scheduler/model/additions.h"
#include "scheduler/model/edits.h"
#include "tests/scheduler/model/decodedschedule.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/allocations.h"
#include "tests/support/damagedschedule.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeschedulestore.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace test;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;
using testing::ElementsAre;

const std::string longName = "a name that is too long to lie within its string";

/// Counts without allocating, unlike a mock.
struct Counter : scheduler::ScheduleObserver {
    std::size_t inserted = 0;
    std::size_t removed = 0;
    int cleared = 0;
    int changes = 0;
    void onEntryInserted(std::size_t, bool) override { ++inserted; }
    void onEntriesRemoved(std::span<const std::size_t> positions) override { removed += positions.size(); }
    void onCleared() override { ++cleared; }
    void onScheduleChanged() override { ++changes; }
};

class Memory : public DecodedSchedule {
protected:
    Memory() {
        list.assign({withPath("a"), withPath("b")});
        list.addObserver(counter);
    }

    FakeClock clock;
    FakeScheduleStore store;
    Counter counter;
};

TEST_F(Memory, FailedInsertLeavesTheListUnchanged) {
    ScheduleList empty;
    ScheduledProject record = withPath(longName);
    std::ptrdiff_t result = 0;
    std::ptrdiff_t firstResult = 0;
    {
        const RefusedAllocations refused;
        result = list.insert(1, std::move(record));
        firstResult = empty.append(ScheduledProject());
    }
    EXPECT_EQ(result, -1);
    EXPECT_THAT(pathsOf(list), ElementsAre("a", "b"));
    EXPECT_EQ(list.capacity(), 2U);
    EXPECT_EQ(counter.inserted, 0U);
    EXPECT_EQ(firstResult, ScheduleList::noMemory);
    EXPECT_EQ(empty.append(ScheduledProject()), 0) << "memory is available again";
}

TEST_F(Memory, IsNotAllocatedForInsertsWithinCapacityOrNotifications) {
    list.append(withPath("c"));
    ASSERT_LT(list.size(), list.capacity());
    const std::vector<std::size_t> descending = {3, 1};
    std::ptrdiff_t result = -1;
    {
        const RefusedAllocations refused;
        result = list.insert(0, ScheduledProject());
        list.removeAll(descending);
        list.remove(0);
        list.clear();
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(counter.inserted, 2U);
    EXPECT_EQ(counter.removed, 3U);
    EXPECT_EQ(counter.cleared, 1);
    EXPECT_EQ(counter.changes, 5);
}

TEST_F(Memory, IsNotAllocatedForAnEdit) {
    ScheduledProject edited = filledEntry();
    edited.path = longName;
    {
        const RefusedAllocations refused;
        EXPECT_NO_THROW(applyEdit(list[0], std::move(edited)));
    }
    EXPECT_EQ(list[0].path, longName);
}

TEST_F(Memory, FailedAdditionIsNotSaved) {
    constexpr std::size_t muchMemory = 10'000;
    const std::vector<std::string> names = {"C:\\a.kra", std::string(muchMemory, 'b'), "c.kra"};
    list.clear();
    {
        const RefusedAllocations refused(muchMemory);
        addEntries(list, {}, names, {}, clock, store);
    }
    EXPECT_THAT(pathsOf(list), ElementsAre("C:\\a.kra", "C:\\\\c.kra"))
        << "one failure must not stop the other files";
    EXPECT_EQ(store.saved.size(), 2U);

    ScheduleList empty;
    {
        const RefusedAllocations refused;
        addEntry(empty, {}, {}, clock, store);
    }
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(store.saved.size(), 2U);
}

TEST_F(Memory, FailedLoadLeavesNoEntries) {
    const Bytes content = encodedSchedule(richSchedule());
    bool decoded = true;
    {
        const RefusedAllocations refused;
        decoded = decode(content);
    }
    EXPECT_FALSE(decoded);
    EXPECT_TRUE(list.empty());
}

TEST_F(Memory, LoadReservesTheCountUnlessItExceedsTheFileSize) {
    Bytes content = encodedSchedule(std::vector<ScheduledProject>(1000));
    std::size_t before = allocationCount;
    EXPECT_TRUE(decode(content));
    EXPECT_EQ(allocationCount, before + 1);
    EXPECT_EQ(list.capacity(), 1000U);
    for (const std::size_t count : {content.size() + 100, content.size()}) {
        putNumber(content, countOffset, static_cast<std::uint32_t>(count));
        before = allocationCount;
        EXPECT_FALSE(decode(content));
        EXPECT_EQ(allocationCount, before) << count;
    }
}

TEST_F(Memory, DamagedFileUsesNoMoreThanItsSizeAllows) {
    Bytes content(1'000'000);
    putNumber(content, 0, scheduler::scheduleMagic);
    putNumber(content, countOffset, 999'999); // the largest count below the file size
    const std::size_t before = allocatedBytes;
    EXPECT_FALSE(decode(content));
    // Three times, because the incomplete last record makes the reserved array double its size.
    EXPECT_LE(allocatedBytes - before, (content.size() / emptyRecordSize + 1) * 3 * sizeof(ScheduledProject));
}

} // namespace
