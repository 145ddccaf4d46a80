#include "scheduler/model/schedulelist.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
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
    scheduler::ScheduleList list;
};

TEST_F(ScheduleList, GrowsByFactorsTwoThenOneAndAHalfThenOneAndAQuarter) {
    const struct {
        std::size_t needed, recordSize, capacity;
    } rows[] = {{1, 100, 2},       {3, 100, 6},         {163, 100, 326},     {164, 100, 246},
                {127, 128, 254},   {128, 128, 192},     {129, 128, 193},     {16383, 1, 32766},
                {16384, 1, 24576}, {131071, 1, 196606}, {131072, 1, 163840}, {1027, 128, 1283},
                {1, 20000, 1}};
    for (const auto& row : rows)
        EXPECT_EQ(grownCapacity(row.needed, row.recordSize), row.capacity)
            << row.needed << " records of " << row.recordSize;
}

TEST_F(ScheduleList, GrowsWheneverItIsFull) {
    std::size_t capacity = 0;
    for (std::size_t count = 1; count <= 3000; ++count) {
        if (count > capacity)
            capacity = grownCapacity(count, sizeof(ScheduledProject));
        ASSERT_EQ(list.append(ScheduledProject()), static_cast<std::ptrdiff_t>(count - 1));
        ASSERT_EQ(list.capacity(), capacity) << count << " entries";
    }
}

TEST_F(ScheduleList, InsertsBeforeThePositionClampedToTheCount) {
    EXPECT_EQ(list.insert(7, withPath("b")), 0);
    EXPECT_EQ(list.insert(0, withPath("a")), 0);
    EXPECT_EQ(list.insert(2, withPath("d")), 2);
    EXPECT_EQ(list.insert(2, withPath("c")), 2);
    EXPECT_EQ(list.insert(static_cast<std::size_t>(-1), withPath("e")), 4);
    EXPECT_EQ(list.append(withPath("f")), 5);
    EXPECT_THAT(pathsOf(list), ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST_F(ScheduleList, ReadsReplacesRemovesAndClears) {
    for (const char* name : {"a", "b", "c", "d"})
        list.append(withPath(name));
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

TEST_F(ScheduleList, RemovesManyEntriesInLinearTime) {
    constexpr std::size_t count = 100'000;
    std::vector<ScheduledProject> entries(count);
    std::vector<std::size_t> everySecond;
    for (std::size_t i = 0; i < count; ++i)
        entries[i].runNumber = static_cast<std::int32_t>(i);
    for (std::size_t position = count - 1; position < count; position -= 2)
        everySecond.push_back(position);
    list.assign(std::move(entries));
    // Removing one by one would move more than a billion records.
    list.removeAll(everySecond);
    ASSERT_EQ(list.size(), count / 2);
    for (std::size_t i = 0; i < list.size(); ++i)
        ASSERT_EQ(list[i].runNumber, static_cast<std::int32_t>(2 * i));
}

TEST_F(ScheduleList, HasAPendingRunWhenAnEnabledEntryHasANextRun) {
    const std::int32_t never = base::TimeValue::never().seconds();
    const struct {
        std::int32_t nextRun;
        std::uint8_t disabled, running;
        bool pending;
    } rows[] = {{never, 0, 0, false}, {never, 0, 1, false}, {1000, 1, 0, false},     {0, 1, 0, false},
                {0, 0, 0, true},      {1, 0, 0, true},      {never - 1, 0, 0, true}, {1000, 0, 1, true}};
    EXPECT_FALSE(list.hasPendingRun());
    for (const auto& row : rows) {
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
