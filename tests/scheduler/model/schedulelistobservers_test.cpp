#include "tests/scheduler/model/schedulelistnames.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <new>
#include <span>
#include <vector>

namespace {

using scheduler::ScheduledProject;
using scheduler::ScheduleList;
using test::fill;
using test::MockObserver;
using test::named;
using test::namesIn;
using testing::ElementsAre;
using testing::InSequence;
using testing::StrictMock;

TEST(ScheduleList, RemovalsAreToldOnceTheyHaveHappened) {
    StrictMock<MockObserver> observer;
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
    struct Counter : scheduler::ScheduleObserver {
        std::size_t removed = 0;
        int cleared = 0;
        void onEntryInserted(std::size_t, bool) override {}
        void onEntriesLoaded(std::size_t) override {}
        void onEntriesRemoved(std::span<const std::size_t> positions) override {
            removed += positions.size();
        }
        void onCleared() override { ++cleared; }
    } counter;
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
}

TEST(ScheduleList, ObserversLearnThePositionAndWhetherItIsTheLast) {
    StrictMock<MockObserver> observer;
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
    list.replace(0, named("A")); // nobody is told
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
    StrictMock<MockObserver> first;
    StrictMock<MockObserver> second;
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

TEST(ScheduleList, AnObserverNeedNotCareForWhatGoes) {
    struct Counter : scheduler::ScheduleObserver {
        int told = 0;
        void onEntryInserted(std::size_t, bool) override { ++told; }
        void onEntriesLoaded(std::size_t) override { ++told; }
    } counter;
    ScheduleList list;
    list.addObserver(counter);
    fill(list, {"a", "b", "c"});
    list.remove(2);
    list.removeAll({1});
    list.clear();
    list.append(named("d"));
    EXPECT_EQ(counter.told, 4);
    EXPECT_THAT(namesIn(list), ElementsAre("d"));
}

TEST(ScheduleList, AnObserverThatLeftIsToldNothing) {
    StrictMock<MockObserver> stays;
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
    list.append(named("b"));
}

TEST(ScheduleList, AnObserverMayTakeItselfOffWhileItIsTold) {
    StrictMock<MockObserver> before;
    StrictMock<MockObserver> leaves;
    StrictMock<MockObserver> after;
    ScheduleList list;
    for (MockObserver* observer : {&before, &leaves, &after})
        list.addObserver(*observer);
    EXPECT_CALL(before, onEntryInserted).Times(2);
    EXPECT_CALL(leaves, onEntryInserted).WillOnce([&] { list.removeObserver(leaves); });
    EXPECT_CALL(after, onEntryInserted).Times(2);
    list.append(named("a"));
    list.append(named("b"));
}

TEST(ScheduleList, SeveralObserversMayTakeThemselvesOffWhileTheyAreTold) {
    StrictMock<MockObserver> first;
    StrictMock<MockObserver> second;
    StrictMock<MockObserver> stays;
    ScheduleList list;
    for (MockObserver* observer : {&first, &second, &stays})
        list.addObserver(*observer);
    EXPECT_CALL(first, onEntriesLoaded).WillOnce([&] { list.removeObserver(first); });
    EXPECT_CALL(second, onEntriesLoaded).WillOnce([&] { list.removeObserver(second); });
    EXPECT_CALL(stays, onEntriesLoaded).Times(2);
    list.assign({});
    list.assign({});
}

TEST(ScheduleList, AnObserverMayTakeOffAnotherOrJoinWhileTold) {
    StrictMock<MockObserver> first;
    StrictMock<MockObserver> second;
    StrictMock<MockObserver> third;
    ScheduleList list;
    list.addObserver(first);
    list.addObserver(second);
    EXPECT_CALL(first, onEntryInserted).WillOnce([&] {
        list.removeObserver(second);
        list.addObserver(third);
    });
    EXPECT_CALL(third, onEntryInserted).Times(testing::AtMost(1));
    list.append(named("a"));
    testing::Mock::VerifyAndClearExpectations(&first);
    testing::Mock::VerifyAndClearExpectations(&third);

    EXPECT_CALL(first, onEntryInserted).Times(1);
    EXPECT_CALL(third, onEntryInserted).Times(1);
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

} // namespace
