#include "scheduler/model/schedulelist.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace test;
using scheduler::grownCapacity;
using scheduler::ScheduledProject;
using testing::ElementsAre;

class ScheduleList : public testing::Test {
protected:
    void fill(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            list.append(withPath(name));
    }

    scheduler::ScheduleList list;
};

TEST_F(ScheduleList, GrowsToTwiceThenHalfAgainThenAQuarterAgain) {
    struct Growth {
        std::size_t needed;
        std::size_t recordSize;
        std::size_t capacity;
    };
    for (const Growth& row : {
             Growth{1, 100, 2}, Growth{2, 100, 4}, Growth{3, 100, 6}, Growth{163, 100, 326}, // 16300 bytes
             Growth{164, 100, 246},                                                          // 16400 bytes
             Growth{127, 128, 254},                                                          // 16256 bytes
             Growth{128, 128, 192},     // 16384 bytes: the threshold itself
             Growth{129, 128, 193},     // an odd count's half is rounded down
             Growth{16383, 1, 32766},   // one below the first threshold
             Growth{16384, 1, 24576},   // the first threshold
             Growth{131071, 1, 196606}, // one below the second
             Growth{131072, 1, 163840}, // the second threshold
             Growth{1027, 128, 1283},   // an odd count's quarter is rounded down
             Growth{1, 20000, 1},       // a half of one record is none
         })
        EXPECT_EQ(grownCapacity(row.needed, row.recordSize), row.capacity)
            << row.needed << " records of " << row.recordSize;
}

TEST_F(ScheduleList, GrowsByTheRuleWheneverItIsFull) {
    std::size_t capacity = 0;
    for (std::size_t count = 1; count <= 3000; ++count) {
        if (count > capacity)
            capacity = grownCapacity(count, sizeof(ScheduledProject));
        ASSERT_EQ(list.append(ScheduledProject()), static_cast<std::ptrdiff_t>(count - 1));
        ASSERT_EQ(list.capacity(), capacity) << count << " entries";
    }
}

TEST_F(ScheduleList, InsertsBeforeThePositionWhichIsClampedToTheCount) {
    EXPECT_EQ(list.insert(7, withPath("b")), 0);
    EXPECT_EQ(list.insert(0, withPath("a")), 0);
    EXPECT_EQ(list.insert(2, withPath("d")), 2);
    EXPECT_EQ(list.insert(2, withPath("c")), 2);
    EXPECT_EQ(list.insert(static_cast<std::size_t>(-1), withPath("e")), 4);
    EXPECT_EQ(list.append(withPath("f")), 5);
    EXPECT_THAT(pathsOf(list), ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST_F(ScheduleList, KeepsAllOthersWholeWhereverAnEntryIsInserted) {
    std::mt19937 random(20260101);
    std::vector<std::string> expected;
    for (int i = 0; i < 600; ++i) {
        // Texts short and long: the short ones lie within the record.
        const std::string name = std::string(random() % 40, 'x') + std::to_string(i);
        const std::size_t position = random() % (expected.size() + 1);
        expected.insert(std::next(expected.begin(), static_cast<std::ptrdiff_t>(position)), name);
        ASSERT_EQ(list.insert(position, withPath(name)), static_cast<std::ptrdiff_t>(position));
    }
    EXPECT_EQ(pathsOf(list), expected);
}

TEST_F(ScheduleList, IsReadReplacedRemovedAndClearedByPosition) {
    fill({"a", "b", "c", "d"});
    list.replace(1, filledEntry());
    EXPECT_EQ(list[1], filledEntry());
    EXPECT_EQ(std::as_const(list)[0].path, "a");
    EXPECT_EQ(list.entries()[2].path, "c");
    EXPECT_EQ(std::as_const(list).entries().size(), 4u);
    list[2].path = "e";
    EXPECT_EQ(list.begin()[2].path, "e");
    list.remove(1);
    EXPECT_THAT(pathsOf(list), ElementsAre("a", "e", "d"));
    list.remove(2);
    list.remove(0);
    EXPECT_THAT(pathsOf(list), ElementsAre("e"));
    EXPECT_FALSE(list.empty());
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0u);
}

TEST_F(ScheduleList, RemovesManyAsItWouldEachFromTheHighestDown) {
    // Every subset of the positions of nine entries, none and all of them included.
    constexpr std::size_t count = 9;
    for (unsigned subset = 0; subset < 1u << count; ++subset) {
        std::vector<std::string> expected;
        std::vector<std::size_t> descending;
        list.clear();
        for (std::size_t i = 0; i < count; ++i)
            expected.emplace_back(i * 4 + 1, static_cast<char>('a' + i));
        fill(expected);
        for (std::size_t position = count; position-- > 0;)
            if (subset >> position & 1) {
                descending.push_back(position);
                expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(position));
            }
        list.removeAll(descending);
        ASSERT_EQ(pathsOf(list), expected) << "subset " << subset;
    }
}

TEST_F(ScheduleList, RemovesManyInOnePassOverTheEntries) {
    constexpr std::size_t count = 100'000;
    std::vector<ScheduledProject> entries(count);
    std::vector<std::size_t> everySecond;
    for (std::size_t i = 0; i < count; ++i)
        entries[i].runNumber = static_cast<std::int32_t>(i);
    for (std::size_t position = count - 1; position < count; position -= 2)
        everySecond.push_back(position);
    list.assign(std::move(entries));
    // One by one this moves five billion records.
    list.removeAll(everySecond);
    ASSERT_EQ(list.size(), count / 2);
    for (std::size_t i = 0; i < list.size(); ++i)
        ASSERT_EQ(list[i].runNumber, static_cast<std::int32_t>(2 * i));
}

TEST_F(ScheduleList, HasAPendingRunWhenAnEnabledEntryHasANextRun) {
    struct PendingRun {
        std::int32_t nextRun;
        std::uint8_t disabled;
        std::uint8_t running;
        bool pending;
    };
    const std::int32_t never = base::TimeValue::never().seconds();
    EXPECT_FALSE(list.hasPendingRun());
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
        list.assign({idle, entry, idle});
        EXPECT_EQ(list.hasPendingRun(), row.pending)
            << row.nextRun << ", disabled " << int{row.disabled} << ", running " << int{row.running};
    }
}

} // namespace
