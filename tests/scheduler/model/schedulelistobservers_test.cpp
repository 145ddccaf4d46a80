#include "tests/scheduler/model/schedulelistnames.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <new>
#include <span>
#include <vector>

namespace {

using scheduler::ScheduleBatch;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;
using test::fill;
using test::MockObserver;
using test::named;
using test::namesIn;
using testing::ElementsAre;
using testing::InSequence;
using testing::NiceMock;
using testing::StrictMock;

/// Counts without taking memory, which a mock does.
struct Counter : scheduler::ScheduleObserver {
    std::size_t removed = 0;
    int cleared = 0;
    int changes = 0;
    void onEntriesRemoved(std::span<const std::size_t> positions) override { removed += positions.size(); }
    void onCleared() override { ++cleared; }
    void onScheduleChanged() override { ++changes; }
};

// Positions

TEST(ScheduleList, RemovalsAreToldOnceTheyHaveHappened) {
    NiceMock<MockObserver> observer;
    ScheduleList list;
    fill(list, {"a", "b", "c", "d", "e"});
    list.addObserver(observer);
    const auto expectTold = [&](std::vector<std::size_t> positions, std::size_t left) {
        EXPECT_CALL(observer, onEntriesRemoved(testing::ElementsAreArray(positions))).WillOnce([&list, left] {
            EXPECT_EQ(list.size(), left);
        });
    };
    const InSequence sequence;
    expectTold({1}, 4);
    expectTold({3, 0}, 2);
    EXPECT_CALL(observer, onCleared).WillOnce([&] { EXPECT_TRUE(list.empty()); });
    list.remove(1);
    list.removeAll({3, 0});
    list.removeAll({}); // nothing has happened
    list.clear();
}

TEST(ScheduleList, RemovalsAreToldWithoutMemory) {
    Counter counter;
    ScheduleList list;
    fill(list, {"a", "b", "c", "d", "e"});
    list.addObserver(counter);
    const std::vector<std::size_t> descending = {3, 1};
    {
        const test::RefusedAllocations refused;
        list.removeAll(descending);
        list.remove(0);
        list.clear();
    }
    EXPECT_EQ(counter.removed, 3U);
    EXPECT_EQ(counter.cleared, 1);
    EXPECT_EQ(counter.changes, 3);
}

TEST(ScheduleList, ObserversLearnThePositionAndWhetherItIsTheLast) {
    NiceMock<MockObserver> observer;
    ScheduleList list;
    list.addObserver(observer);
    {
        const InSequence inThisOrder;
        EXPECT_CALL(observer, onEntryInserted(0, true));
        EXPECT_CALL(observer, onEntryInserted(0, false));
        EXPECT_CALL(observer, onEntryInserted(1, false));
        EXPECT_CALL(observer, onEntryInserted(3, true));
    }
    list.append(named("c"));
    list.insert(0, named("a"));
    list.insert(1, named("b"));
    list.insert(99, named("d"));
}

TEST(ScheduleList, ObserversSeeTheChangedList) {
    ScheduleList list;
    testing::NiceMock<MockObserver> observer;
    list.addObserver(observer);
    ON_CALL(observer, onEntryInserted).WillByDefault([&](std::size_t position, bool) {
        EXPECT_EQ(list[position].path, "new");
    });
    EXPECT_CALL(observer, onEntryInserted).Times(1);
    list.append(named("new"));
}

TEST(ScheduleList, ObserversLearnOfALoad) {
    NiceMock<MockObserver> first;
    NiceMock<MockObserver> second;
    ScheduleList list;
    list.append(named("old"));
    list.addObserver(first);
    list.addObserver(second);
    const InSequence inThisOrder;
    EXPECT_CALL(first, onEntriesLoaded(2)).WillOnce([&] {
        EXPECT_THAT(namesIn(list), ElementsAre("a", "b"));
    });
    EXPECT_CALL(second, onEntriesLoaded(2));
    list.assign({named("a"), named("b")});
}

TEST(ScheduleList, AnObserverHearsOnlyWhatItCaresFor) {
    struct Indifferent : scheduler::ScheduleObserver {
    } observer;
    ScheduleList list;
    list.addObserver(observer);
    fill(list, {"a", "b", "c"});
    list.remove(2);
    list.removeAll({1});
    list.clear();
    list.assign({named("d")});
    EXPECT_THAT(namesIn(list), ElementsAre("d"));
}

TEST(ScheduleList, AnObserverThatLeftIsToldNothing) {
    NiceMock<MockObserver> stays;
    StrictMock<MockObserver> leaves;
    ScheduleList list;
    list.addObserver(leaves);
    list.addObserver(stays);
    list.removeObserver(leaves);
    EXPECT_CALL(stays, onEntryInserted(0, true));
    list.append(named("a"));
    list.removeObserver(leaves); // once more: nothing happens

    list.addObserver(leaves);
    EXPECT_CALL(stays, onEntryInserted(1, true));
    EXPECT_CALL(leaves, onEntryInserted(1, true));
    EXPECT_CALL(leaves, onScheduleChanged);
    list.append(named("b"));
}

TEST(ScheduleList, NothingComesInThatAnObserverHasNoRoomFor) {
    struct Narrow : scheduler::ScheduleObserver {
        std::size_t room = 2;
        int told = 0;
        void makeRoom(std::size_t count) override {
            if (count > room)
                throw std::bad_alloc();
        }
        void onEntryInserted(std::size_t, bool) override { ++told; }
        void onEntriesLoaded(std::size_t) override { ++told; }
        void onScheduleChanged() override { ++told; }
    } narrow;
    ScheduleList list;
    list.addObserver(narrow);
    fill(list, {"a", "b"});
    narrow.told = 0;
    EXPECT_EQ(list.append(named("c")), ScheduleList::noMemory);
    EXPECT_FALSE(list.assign(std::vector<ScheduledProject>(3)));
    EXPECT_THAT(namesIn(list), ElementsAre("a", "b"));
    EXPECT_EQ(narrow.told, 0);
    EXPECT_TRUE(list.assign({named("d"), named("e")}));
    EXPECT_THAT(namesIn(list), ElementsAre("d", "e"));
}

// Changes

TEST(ScheduleList, AChangeIsToldAfterThePositions) {
    StrictMock<MockObserver> observer;
    ScheduleList list;
    list.addObserver(observer);
    const InSequence sequence;
    EXPECT_CALL(observer, onEntryInserted);
    EXPECT_CALL(observer, onScheduleChanged);
    list.append(named("a"));
    EXPECT_CALL(observer, onScheduleChanged).WillOnce([&] { EXPECT_EQ(list[0].path, "b"); });
    list.replace(0, named("b"));
    EXPECT_CALL(observer, onEntriesRemoved);
    EXPECT_CALL(observer, onScheduleChanged);
    list.remove(0);
    EXPECT_CALL(observer, onEntriesLoaded);
    EXPECT_CALL(observer, onScheduleChanged);
    list.assign({named("c"), named("d")});
    EXPECT_CALL(observer, onEntriesRemoved);
    EXPECT_CALL(observer, onScheduleChanged);
    list.removeAll({1});
    EXPECT_CALL(observer, onCleared);
    EXPECT_CALL(observer, onScheduleChanged);
    list.clear();
    EXPECT_CALL(observer, onScheduleChanged);
    list.noteChange();
}

TEST(ScheduleList, EveryObserverIsToldOfAChange) {
    Counter first;
    Counter second;
    ScheduleList list;
    list.addObserver(first);
    list.addObserver(second);
    list.noteChange();
    EXPECT_EQ(first.changes, 1);
    EXPECT_EQ(second.changes, 1);
}

class ScheduleBatchTest : public testing::Test {
protected:
    ScheduleBatchTest() { list.addObserver(counter); }

    Counter counter;
    ScheduleList list;
};

TEST_F(ScheduleBatchTest, TellsOfItsChangesOnceAtItsEnd) {
    {
        const ScheduleBatch batch(list);
        EXPECT_FALSE(batch.hasChanges());
        list.append(named("a"));
        EXPECT_TRUE(batch.hasChanges());
        list.remove(0);
        EXPECT_EQ(counter.removed, 1U) << "positions are told at once";
        list.noteChange();
        EXPECT_EQ(counter.changes, 0);
    }
    EXPECT_EQ(counter.changes, 1);
    list.noteChange();
    EXPECT_EQ(counter.changes, 2) << "without a batch again at once";
}

TEST_F(ScheduleBatchTest, TellsNothingWhenNothingChanged) {
    list.noteChange();
    {
        const ScheduleBatch batch(list);
        EXPECT_FALSE(batch.hasChanges()) << "the change was before the batch";
    }
    EXPECT_EQ(counter.changes, 1);
}

TEST_F(ScheduleBatchTest, EachBatchBeginsWithoutChanges) {
    {
        const ScheduleBatch batch(list);
        list.noteChange();
    }
    {
        const ScheduleBatch batch(list);
        EXPECT_FALSE(batch.hasChanges());
    }
    EXPECT_EQ(counter.changes, 1);
}

TEST_F(ScheduleBatchTest, OnlyTheOutermostOfNestedBatchesTells) {
    {
        const ScheduleBatch outer(list);
        {
            const ScheduleBatch inner(list);
            list.noteChange();
        }
        EXPECT_EQ(counter.changes, 0);
        EXPECT_TRUE(outer.hasChanges());
        { const ScheduleBatch withoutChanges(list); }
        EXPECT_EQ(counter.changes, 0);
    }
    EXPECT_EQ(counter.changes, 1);
}

TEST_F(ScheduleBatchTest, TellsWhenAnExceptionLeavesIt) {
    try {
        const ScheduleBatch outer(list);
        const ScheduleBatch inner(list);
        list.noteChange();
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        EXPECT_EQ(counter.changes, 1);
    }
    list.noteChange();
    EXPECT_EQ(counter.changes, 2);
}

} // namespace
