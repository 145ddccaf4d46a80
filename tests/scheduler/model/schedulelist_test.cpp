#include "scheduler/model/schedulelist.h"
#include "tests/scheduler/model/schedulelistnames.h"
#include "tests/support/allocations.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using scheduler::grownCapacity;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;
using test::fill;
using test::MockObserver;
using test::named;
using test::namesIn;
using testing::ElementsAre;
using testing::StrictMock;

// Growth

struct Growth {
    std::size_t needed;
    std::size_t recordSize;
    std::size_t capacity;
};

TEST(GrownCapacity, DoublesThenAddsHalfThenAQuarter) {
    const Growth table[] = {
        {1, 100, 2},           {2, 100, 4},   {3, 100, 6}, {163, 100, 326}, // 16300 bytes
        {164, 100, 246},                                                    // 16400 bytes
        {127, 128, 254},                                                    // 16256 bytes
        {128, 128, 192},                      // 16384 bytes: the threshold itself
        {129, 128, 193},                      // an odd count's half is rounded down
        {16383, 1, 32766},                    // one below the first threshold
        {16384, 1, 24576},                    // the first threshold
        {131071, 1, 196606},                  // one below the second
        {131072, 1, 163840},                  // the second threshold
        {1023, 128, 1534},                    // 130944 bytes
        {1024, 128, 1280},                    // 131072 bytes
        {1027, 128, 1283},                    // an odd count's quarter is rounded down
        {100000, 140, 125000}, {1, 20000, 1}, // a quarter or a half of one record is none
    };
    for (const Growth& row : table)
        EXPECT_EQ(grownCapacity(row.needed, row.recordSize), row.capacity)
            << row.needed << " records of " << row.recordSize;
}

TEST(ScheduleList, GrowsByTheRuleWheneverItIsFull) {
    ScheduleList list;
    std::size_t capacity = 0;
    for (std::size_t count = 1; count <= 3000; ++count) {
        if (count > capacity)
            capacity = grownCapacity(count, sizeof(ScheduledProject));
        ASSERT_EQ(list.append(ScheduledProject()), static_cast<std::ptrdiff_t>(count - 1));
        ASSERT_EQ(list.capacity(), capacity) << count << " entries";
    }
}

// Inserting

TEST(ScheduleList, InsertsBeforeThePositionAndClampsItToTheCount) {
    ScheduleList list;
    EXPECT_EQ(list.insert(7, named("b")), 0);
    EXPECT_EQ(list.insert(0, named("a")), 0);
    EXPECT_EQ(list.insert(2, named("d")), 2);
    EXPECT_EQ(list.insert(2, named("c")), 2);
    EXPECT_EQ(list.insert(std::numeric_limits<std::size_t>::max(), named("e")), 4);
    EXPECT_EQ(list.append(named("f")), 5);
    EXPECT_THAT(namesIn(list), ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST(ScheduleList, InsertingAnywhereKeepsAllOthersWhole) {
    std::mt19937 random(20260101);
    std::vector<std::string> expected;
    ScheduleList list;
    for (int i = 0; i < 600; ++i) {
        // Texts short and long: the short ones lie within the record.
        const std::string name = std::string(random() % 40, 'x') + std::to_string(i);
        const std::size_t position = random() % (expected.size() + 1);
        expected.insert(std::next(expected.begin(), static_cast<std::ptrdiff_t>(position)), name);
        ASSERT_EQ(list.insert(position, named(name)), static_cast<std::ptrdiff_t>(position));
    }
    EXPECT_EQ(namesIn(list), expected);
}

TEST(ScheduleList, AnInsertThatFindsNoMemoryLeavesTheListAsItWas) {
    StrictMock<MockObserver> observer;
    ScheduleList list;
    fill(list, {"a", "b"});
    while (list.size() < list.capacity())
        list.append(named("more"));
    const std::vector<std::string> before = namesIn(list);
    const std::size_t capacity = list.capacity();
    list.addObserver(observer);

    ScheduledProject record = named("a name that is too long to lie within its string");
    std::ptrdiff_t result = 0;
    {
        const test::RefusedAllocations refused;
        result = list.insert(1, std::move(record));
    }
    EXPECT_EQ(result, -1);
    EXPECT_EQ(namesIn(list), before);
    EXPECT_EQ(list.capacity(), capacity);
}

TEST(ScheduleList, TheFirstInsertMayFindNoMemoryToo) {
    ScheduleList list;
    std::ptrdiff_t result = 0;
    {
        const test::RefusedAllocations refused;
        result = list.append(ScheduledProject());
    }
    EXPECT_EQ(result, ScheduleList::noMemory);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.append(named("a")), 0) << "memory is back";
}

TEST(ScheduleList, AnInsertThatNeedsNoMemorySucceedsWithout) {
    ScheduleList list;
    list.append(named("a"));
    ASSERT_LT(list.size(), list.capacity());

    // Unlike a mock this one takes no memory itself.
    struct Counter : scheduler::ScheduleObserver {
        int told = 0;
        void onEntryInserted(std::size_t, bool) override { ++told; }
    } counter;
    list.addObserver(counter);
    std::ptrdiff_t result = 0;
    {
        const test::RefusedAllocations refused;
        result = list.insert(0, ScheduledProject());
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(counter.told, 1);
}

// Reading, replacing, removing

TEST(ScheduleList, ReadsAndReplacesByPosition) {
    ScheduleList list;
    fill(list, {"a", "b", "c"});
    list.replace(1, test::filledEntry());
    EXPECT_EQ(list[1], test::filledEntry());
    EXPECT_EQ(std::as_const(list)[0].path, "a");
    EXPECT_EQ(list.entries()[2].path, "c");
    EXPECT_EQ(std::as_const(list).entries().size(), 3u);
    list[2].path = "d";
    EXPECT_EQ(list.begin()[2].path, "d");
}

TEST(ScheduleList, RemovesOneAndMovesTheOthersDown) {
    ScheduleList list;
    fill(list, {"a", "b", "c", "d"});
    list.remove(1);
    EXPECT_THAT(namesIn(list), ElementsAre("a", "c", "d"));
    list.remove(2);
    list.remove(0);
    EXPECT_THAT(namesIn(list), ElementsAre("c"));
    list.remove(0);
    EXPECT_TRUE(list.empty());
}

TEST(ScheduleList, ClearsAll) {
    ScheduleList list;
    fill(list, {"a", "b"});
    list.clear();
    EXPECT_EQ(list.size(), 0u);
    EXPECT_TRUE(list.empty());
}

TEST(ScheduleList, RemovingManyIsRemovingEachFromTheHighestDown) {
    // Every subset of the positions of nine entries, none and all of them included.
    constexpr std::size_t count = 9;
    for (unsigned subset = 0; subset < 1u << count; ++subset) {
        ScheduleList oneByOne;
        ScheduleList atOnce;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string name(i * 4 + 1, static_cast<char>('a' + i));
            oneByOne.append(named(name));
            atOnce.append(named(name));
        }
        std::vector<std::size_t> descending;
        for (std::size_t position = count; position-- > 0;)
            if (subset >> position & 1)
                descending.push_back(position);
        for (const std::size_t position : descending)
            oneByOne.remove(position);
        atOnce.removeAll(descending);
        ASSERT_EQ(namesIn(atOnce), namesIn(oneByOne)) << "subset " << subset;
    }
}

TEST(ScheduleList, RemovingManyPassesOnceOverTheEntries) {
    constexpr std::size_t count = 100'000;
    std::vector<ScheduledProject> entries(count);
    for (std::size_t i = 0; i < count; ++i)
        entries[i].runNumber = static_cast<std::int32_t>(i);
    ScheduleList list;
    list.assign(std::move(entries));
    std::vector<std::size_t> everySecond;
    for (std::size_t position = count - 1; position < count; position -= 2)
        everySecond.push_back(position);
    // One by one this moves five billion records.
    list.removeAll(everySecond);
    ASSERT_EQ(list.size(), count / 2);
    for (std::size_t i = 0; i < list.size(); ++i)
        ASSERT_EQ(list[i].runNumber, static_cast<std::int32_t>(2 * i));
}

// Pending runs

struct PendingRun {
    std::int32_t nextRun;
    std::uint8_t disabled;
    std::uint8_t running;
    bool pending;
};

TEST(ScheduleList, ARunIsPendingWhenAnEnabledEntryHasANextRun) {
    const std::int32_t never = base::TimeValue::never().seconds();
    EXPECT_FALSE(ScheduleList().hasPendingRun());
    for (const PendingRun& row :
         {PendingRun{never, 0, 0, false}, PendingRun{never, 0, 1, false}, PendingRun{1000, 1, 0, false},
          PendingRun{0, 1, 0, false}, PendingRun{0, 0, 0, true}, PendingRun{1, 0, 0, true},
          PendingRun{never - 1, 0, 0, true}, PendingRun{1000, 0, 1, true}}) {
        ScheduledProject entry;
        entry.nextRun = base::TimeValue(row.nextRun);
        entry.disabled = row.disabled;
        entry.running = row.running;
        ScheduledProject idle;
        idle.nextRun = base::TimeValue::never();
        ScheduleList list;
        list.assign({idle, entry, idle});
        EXPECT_EQ(list.hasPendingRun(), row.pending)
            << row.nextRun << ", disabled " << int{row.disabled} << ", running " << int{row.running};
    }
}

} // namespace
