#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace scheduler {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr TickResult paused{.changed = true, .unfinished = true};
constexpr TickResult finished{.changed = true, .unfinished = false};

/// Projects may run side by side, and each start takes as long as a tick may.
class EnginePausesTest : public SchedulerEngineTest {
protected:
    EnginePausesTest() {
        policy.runMultiple = true;
        clock.uptimeStep = milliseconds(30);
    }

    void addDueEntries(std::initializer_list<const char*> paths) {
        for (const char* const path : paths)
            addDue(path);
    }
    /// The paths of the entries that a slice of a tick starts.
    std::vector<std::string> startedAt(std::int32_t secondsFromStart) {
        const std::size_t before = launcher.launched.size();
        tickAt(secondsFromStart);
        std::vector<std::string> paths;
        for (std::size_t i = before; i < launcher.launched.size(); ++i)
            paths.push_back(launcher.launched[i].path);
        return paths;
    }
};

// When a tick pauses

TEST_F(EnginePausesTest, ATickPausesAfterThirtyMilliseconds) {
    struct Row {
        int millisecondsPerStart;
        std::size_t started;
    };
    for (const Row& row :
         {Row{0, 5}, Row{1, 5}, Row{10, 3}, Row{15, 2}, Row{29, 2}, Row{30, 1}, Row{500, 1}}) {
        entries.clear();
        addDueEntries({"a", "b", "c", "d", "e"});
        clock.uptimeStep = milliseconds(row.millisecondsPerStart);
        EXPECT_EQ(startedAt(0).size(), row.started) << row.millisecondsPerStart;
        engine.setSuspended(true);
        engine.setSuspended(false);
    }
}

TEST_F(EnginePausesTest, ATickThatHasStartedTheLastDueEntryIsFinished) {
    addDueEntries({"a", "b"});
    addIdle("c");
    EXPECT_EQ(tickAt(0), paused);
    EXPECT_EQ(tickAt(0), finished);
    EXPECT_EQ(tickAt(0), TickResult());
}

TEST_F(EnginePausesTest, EachSliceIsShownOnceAtItsEnd) {
    addDueEntries({"a", "b"});
    tickAt(0);
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "redraw"));
    tickAt(0);
    EXPECT_THAT(log, ElementsAre("launch b as run 2", "redraw"));
}

TEST_F(EnginePausesTest, ATickDoesNotPauseAfterAStartThatFailed) {
    launcher.threadsStart = false;
    addDueEntries({"a", "b", "c"});
    EXPECT_EQ(tickAt(0), finished);
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "save", "launch b as run 1", "save",
                                 "launch c as run 1", "save", "redraw"));
}

TEST_F(EnginePausesTest, ATickWhoseEntriesMustWaitDoesNotPause) {
    policy.runMultiple = false;
    addDueEntries({"a", "b", "c"});
    EXPECT_EQ(tickAt(0), finished);
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "redraw"));
    EXPECT_EQ(entries[1].waitingSince, at(0));
    EXPECT_EQ(entries[2].waitingSince, at(0));
}

// How it goes on

TEST_F(EnginePausesTest, AllSlicesHaveTheMomentOfTheFirst) {
    addDueEntries({"a", "b"});
    addDue("later");
    entries[2].nextRun = at(1);
    tickAt(0);
    EXPECT_EQ(tickAt(5), finished);
    EXPECT_EQ(entries[1].runStart, at(0));
    EXPECT_EQ(entries[2].running, 0) << "not due when the tick began";
    EXPECT_THAT(startedAt(5), ElementsAre("later"));
    EXPECT_EQ(entries[2].runStart, at(5));
}

TEST_F(EnginePausesTest, EachEntryIsVisitedOnceInATick) {
    addFollower("follower", 1, 0);
    addDueEntries({"a", "b"});
    addFollower("follower behind", 1, 0);
    EXPECT_THAT(startedAt(0), ElementsAre("a"));
    ASSERT_TRUE(finishAt(0, 1));
    ASSERT_TRUE(engine.isDue(0, at(0))) << "it was woken";
    EXPECT_THAT(startedAt(0), ElementsAre("b"));
    EXPECT_THAT(startedAt(0), ElementsAre("follower behind"));
    EXPECT_THAT(startedAt(0), ElementsAre("follower")) << "in the next tick";
}

TEST_F(EnginePausesTest, EntriesAddedMeanwhileBelongToTheTick) {
    addDueEntries({"a", "b"});
    startedAt(0);
    addDue("c");
    EXPECT_THAT(startedAt(0), ElementsAre("b"));
    EXPECT_THAT(startedAt(0), ElementsAre("c"));
}

// What is removed meanwhile

struct Removal {
    const char* what;
    std::vector<std::size_t> positions; ///< descending
    std::vector<std::string> startedNext;
    bool goesOn; ///< whether the slice after that starts another
};

TEST_F(EnginePausesTest, ARemovalNeitherSkipsNorRepeatsAnEntry) {
    // The first slice starts b; c is disabled; the next entry to visit is d.
    const Removal table[] = {
        {"nothing", {}, {"d"}, true},
        {"before the place", {0}, {"d"}, true},
        {"the last visited", {1}, {"d"}, true},
        {"between the last started and the place", {2}, {"d"}, true},
        {"all visited", {2, 1, 0}, {"d"}, true},
        {"at the place", {3}, {"e"}, false},
        {"at the place and before", {3, 0}, {"e"}, false},
        {"after the place", {4}, {"d"}, false},
        {"on both sides", {4, 2, 0}, {"d"}, false},
        {"all that is left", {4, 3}, {}, false},
        {"everything", {4, 3, 2, 1, 0}, {}, false},
    };
    for (const bool oneByOne : {false, true}) {
        for (const Removal& row : table) {
            SCOPED_TRACE(row.what);
            entries.clear();
            launcher.launched.clear();
            addIdle("a");
            addDueEntries({"b", "c", "d", "e"});
            entries[2].disabled = 1;
            ASSERT_THAT(startedAt(0), ElementsAre("b"));
            // Due from now on, but visited already.
            for (const std::size_t visited : {0U, 2U}) {
                entries[visited].disabled = 0;
                entries[visited].nextRun = at(0);
            }
            if (oneByOne) {
                for (const std::size_t position : row.positions)
                    entries.remove(position);
            } else {
                entries.removeAll(row.positions);
            }
            EXPECT_EQ(startedAt(0), row.startedNext);
            if (row.goesOn) {
                EXPECT_THAT(startedAt(0), ElementsAre("e"));
            }
            engine.setSuspended(true);
            engine.setSuspended(false);
        }
    }
}

// What ends it or changes its rules

TEST_F(EnginePausesTest, ASuspensionEndsTheTick) {
    addDueEntries({"a", "b", "c"});
    startedAt(0);
    engine.setSuspended(true);
    EXPECT_EQ(tickAt(0), TickResult());
    engine.setSuspended(false);
    for (ScheduledProject& entry : entries)
        entry.nextRun = at(0);
    ASSERT_TRUE(finishAt(1, 1));
    entries[0].nextRun = at(2);
    EXPECT_THAT(startedAt(2), ElementsAre("a")) << "a new tick begins at the first entry";
    EXPECT_EQ(entries[0].runStart, at(2));
}

TEST_F(EnginePausesTest, WithoutSideBySideTheRestOfTheTickWaits) {
    addDueEntries({"a", "b", "c"});
    EXPECT_EQ(tickAt(0), paused);
    policy.runMultiple = false;
    EXPECT_EQ(tickAt(5), TickResult()) << "they only begin to wait";
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(entries[1].waitingSince, at(0));
    EXPECT_EQ(entries[2].waitingSince, at(0));
}

TEST_F(EnginePausesTest, WithoutSideBySideOneOfTheRestStartsWhenNothingRuns) {
    addDueEntries({"a", "b", "c"});
    startedAt(0);
    policy.runMultiple = false;
    ASSERT_TRUE(finishAt(1, 1));
    EXPECT_EQ(tickAt(1), finished);
    EXPECT_EQ(entries[1].running, 1);
    EXPECT_EQ(entries[2].waitingSince, at(0));
}

TEST_F(EnginePausesTest, AManualRunMeanwhileIsNotPartOfTheTick) {
    addDueEntries({"a", "b", "c"});
    startedAt(0);
    engine.runEntry(1, at(4), true);
    EXPECT_EQ(entries[1].runStart, at(4));
    EXPECT_THAT(startedAt(5), ElementsAre("c"));
    EXPECT_EQ(entries[2].runStart, at(0));
}

// The test command

TEST_F(EnginePausesTest, TheTestCommandDoesNotPause) {
    addDueEntries({"a", "b", "c"});
    engine.testTick();
    EXPECT_TRUE(
        std::ranges::all_of(entries, [](const ScheduledProject& entry) { return entry.running != 0; }));
    EXPECT_THAT(log, ElementsAre("redraw"));
    EXPECT_EQ(tickAt(0), TickResult()) << "there is no tick to continue";
}

TEST_F(EnginePausesTest, TheTestCommandLeavesAnUnfinishedTickAsItIs) {
    addDueEntries({"visited", "a", "b", "c"});
    entries[0].disabled = 1;
    startedAt(0);
    entries[0].disabled = 0;
    entries[3].disabled = 1;
    clock.set(at(6));
    engine.testTick();
    EXPECT_EQ(entries[0].runStart, at(6)) << "it visits all entries, at its own moment";
    EXPECT_EQ(entries[2].runStart, at(6));

    entries[0].running = 0;
    entries[3].disabled = 0;
    EXPECT_THAT(startedAt(9), ElementsAre("c"));
    EXPECT_EQ(entries[3].runStart, at(0));
}

} // namespace
} // namespace scheduler
