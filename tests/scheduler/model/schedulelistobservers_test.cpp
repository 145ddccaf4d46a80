#include "scheduler/model/schedulelist.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/eventlog.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <new>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace test;
using scheduler::ScheduleBatch;
using scheduler::ScheduledProject;
using testing::ElementsAre;

class Listener : public scheduler::ScheduleObserver {
public:
    Listener(const scheduler::ScheduleList& list, EventLog& log, std::string name = "")
        : list_(list), log_(log), name_(std::move(name)) {}

    std::size_t room = 100;

private:
    void makeRoom(std::size_t count) override {
        if (count > room)
            throw std::bad_alloc();
    }
    void onEntryInserted(std::size_t position, bool appended) override {
        record("inserted " + std::to_string(position) + (appended ? ", the last" : ""));
    }
    void onEntriesLoaded(std::size_t count) override { record("loaded " + std::to_string(count)); }
    void onEntriesRemoved(std::span<const std::size_t> positions) override {
        std::string what = "removed";
        for (const std::size_t position : positions)
            what += " " + std::to_string(position);
        record(what);
    }
    void onCleared() override { record("cleared"); }
    void onScheduleChanged() override { record("changed"); }

    void record(const std::string& what) {
        log_.push_back(name_ + what + ": ");
        for (const ScheduledProject& entry : list_)
            log_.back() += entry.path;
    }

    const scheduler::ScheduleList& list_;
    EventLog& log_;
    std::string name_;
};

class ScheduleObservers : public testing::Test {
protected:
    ScheduleObservers() { list.addObserver(listener); }

    EventLog newEvents() { return std::exchange(log, {}); }

    scheduler::ScheduleList list;
    EventLog log;
    Listener listener{list, log};
};

TEST_F(ScheduleObservers, ReceivePositionsThenTheChangeAfterItHappened) {
    list.append(withPath("c"));
    EXPECT_THAT(newEvents(), ElementsAre("inserted 0, the last: c", "changed: c"));
    list.insert(0, withPath("a"));
    EXPECT_THAT(newEvents(), ElementsAre("inserted 0: ac", "changed: ac"));
    list.insert(1, withPath("b"));
    EXPECT_THAT(newEvents(), ElementsAre("inserted 1: abc", "changed: abc"));
    list.insert(99, withPath("d"));
    EXPECT_THAT(newEvents(), ElementsAre("inserted 3, the last: abcd", "changed: abcd"));
    list.replace(0, withPath("e"));
    EXPECT_THAT(newEvents(), ElementsAre("changed: ebcd"));
    list.remove(1);
    EXPECT_THAT(newEvents(), ElementsAre("removed 1: ecd", "changed: ecd"));
    list.removeAll({2, 0});
    EXPECT_THAT(newEvents(), ElementsAre("removed 2 0: c", "changed: c"));
    list.removeAll({});
    EXPECT_THAT(newEvents(), ElementsAre());
    list.notifyChanged();
    EXPECT_THAT(newEvents(), ElementsAre("changed: c"));
    list.assign({withPath("f"), withPath("g")});
    EXPECT_THAT(newEvents(), ElementsAre("loaded 2: fg", "changed: fg"));
    list.clear();
    EXPECT_THAT(newEvents(), ElementsAre("cleared: ", "changed: "));
}

TEST_F(ScheduleObservers, AreNotifiedInOrderUntilRemoved) {
    Listener other(list, log, "other ");
    list.addObserver(other);
    list.append(withPath("a"));
    EXPECT_THAT(newEvents(), ElementsAre("inserted 0, the last: a", "other inserted 0, the last: a",
                                         "changed: a", "other changed: a"));
    list.removeObserver(listener);
    list.removeObserver(listener); // a second removal has no effect
    list.clear();
    EXPECT_THAT(newEvents(), ElementsAre("other cleared: ", "other changed: "));
    list.addObserver(listener);
    list.notifyChanged();
    EXPECT_THAT(newEvents(), ElementsAre("other changed: ", "changed: "));
}

TEST_F(ScheduleObservers, PreventInsertionWhenTheyHaveNoMemory) {
    listener.room = 2;
    list.assign({withPath("a"), withPath("b")});
    newEvents();
    EXPECT_EQ(list.append(withPath("c")), scheduler::ScheduleList::noMemory);
    EXPECT_FALSE(list.assign(std::vector<ScheduledProject>(3)));
    EXPECT_THAT(newEvents(), ElementsAre());
    EXPECT_THAT(pathsOf(list), ElementsAre("a", "b"));
}

TEST_F(ScheduleObservers, AreNotifiedOnceAtTheEndOfABatch) {
    list.notifyChanged(); // must not count as a change of the batch
    newEvents();
    {
        const ScheduleBatch batch(list);
        EXPECT_FALSE(batch.hasChanges());
        list.append(withPath("a"));
        EXPECT_TRUE(batch.hasChanges());
        list.remove(0);
        list.notifyChanged();
        EXPECT_THAT(newEvents(), ElementsAre("inserted 0, the last: a", "removed 0: "))
            << "positions must be sent at once";
    }
    EXPECT_THAT(newEvents(), ElementsAre("changed: "));
    {
        const ScheduleBatch batch(list);
        EXPECT_FALSE(batch.hasChanges()) << "a new batch must have no changes";
    }
    EXPECT_THAT(newEvents(), ElementsAre());
    list.notifyChanged();
    EXPECT_THAT(newEvents(), ElementsAre("changed: ")) << "without a batch, at once";
}

TEST_F(ScheduleObservers, AreNotifiedAtTheEndOfTheOutermostBatchEvenAfterAnException) {
    {
        const ScheduleBatch outer(list);
        {
            const ScheduleBatch inner(list);
            list.notifyChanged();
        }
        EXPECT_TRUE(outer.hasChanges());
        { const ScheduleBatch withoutChanges(list); }
        EXPECT_THAT(newEvents(), ElementsAre());
    }
    EXPECT_THAT(newEvents(), ElementsAre("changed: "));
    try {
        const ScheduleBatch outer(list);
        const ScheduleBatch inner(list);
        list.notifyChanged();
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        EXPECT_THAT(newEvents(), ElementsAre("changed: "));
    }
    list.notifyChanged();
    EXPECT_THAT(newEvents(), ElementsAre("changed: "));
}

} // namespace
