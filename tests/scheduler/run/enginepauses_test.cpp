#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

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

/// Projects may run at the same time, and each start uses up the time that a tick may take.
class EnginePauses : public SchedulerEngineTest {
protected:
    EnginePauses() {
        policy.runMultiple = true;
        clock.uptimeStep = milliseconds(30);
    }

    void addDueEntries(std::initializer_list<const char*> paths) {
        for (const char* const path : paths)
            addDue(path);
    }
    using Paths = std::vector<std::string>;

    Paths startedAt(std::int32_t seconds) {
        launcher.launched.clear();
        tickAt(seconds);
        Paths paths;
        for (const auto& run : launcher.launched)
            paths.push_back(run.path);
        return paths;
    }
};

TEST_F(EnginePauses, TickPausesAfterThirtyMilliseconds) {
    const struct {
        int millisecondsPerStart;
        std::string started;
    } rows[] = {{0, "abcde"}, {1, "abcde"}, {10, "abc"}, {15, "ab"}, {29, "ab"}, {30, "a"}, {500, "a"}};
    for (const auto& row : rows) {
        entries.clear();
        addDueEntries({"a", "b", "c", "d", "e"});
        clock.uptimeStep = milliseconds(row.millisecondsPerStart);
        std::string started;
        for (const std::string& path : startedAt(0))
            started += path;
        EXPECT_EQ(started, row.started) << row.millisecondsPerStart;
    }
}

TEST_F(EnginePauses, EachSliceRedrawsOnceAndTheLastDueEntryEndsTheTick) {
    addDueEntries({"a", "b"});
    addIdle("c");
    EXPECT_EQ(tickAt(0), paused);
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "redraw"));
    EXPECT_EQ(tickAt(0), finished);
    EXPECT_THAT(log, ElementsAre("launch b as run 2", "redraw"));
    EXPECT_EQ(tickAt(0), TickResult());
}

TEST_F(EnginePauses, TickPausesOnlyAfterStarts) {
    launcher.threadsStart = false;
    addDueEntries({"a", "b", "c"});
    EXPECT_EQ(tickAt(0), finished) << "every start fails";
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "save", "launch b as run 1", "save",
                                 "launch c as run 1", "save", "redraw"));
    launcher.threadsStart = true;
    policy.runMultiple = false;
    for (ScheduledProject& entry : entries)
        entry.nextRun = at(0);
    EXPECT_EQ(tickAt(0), finished) << "the others wait";
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "redraw"));
    EXPECT_EQ(entries[2].waitingSince, at(0));
}

TEST_F(EnginePauses, TickVisitsEachEntryOnceAndSlicesShareTheStartTime) {
    addFollower("follower", 1, 0);
    addDueEntries({"a", "b", "later"});
    entries[3].nextRun = at(1);
    EXPECT_THAT(startedAt(0), ElementsAre("a"));
    ASSERT_TRUE(finishAt(0, 1));
    ASSERT_TRUE(engine.isDue(0, at(0))) << "the end must schedule the follower";
    addDue("added");
    for (const char* const next : {"b", "added"})
        EXPECT_THAT(startedAt(5), ElementsAre(next));
    EXPECT_EQ(entries[4].runStart, at(0));
    for (const char* const next : {"follower", "later"})
        EXPECT_THAT(startedAt(5), ElementsAre(next)) << "in the next tick";
    EXPECT_EQ(entries[3].runStart, at(5));
}

TEST_F(EnginePauses, RemovalNeitherSkipsNorRepeatsAnEntry) {
    // The first slice starts b and skips c, which is disabled. The next entry to visit is d.
    const struct {
        const char* what;
        std::vector<std::size_t> positions; // descending
        std::vector<std::string> startedNext;
        bool nextSliceStartsE;
    } table[] = {
        {"none", {}, {"d"}, true},
        {"the last started entry", {1}, {"d"}, true},
        {"between the last started and the next entry", {2}, {"d"}, true},
        {"all visited entries", {2, 1, 0}, {"d"}, true},
        {"the next entry and an earlier one", {3, 0}, {"e"}, false},
        {"on both sides", {4, 2, 0}, {"d"}, false},
        {"all remaining entries", {4, 3}, {}, false},
    };
    for (const bool oneByOne : {false, true}) {
        for (const auto& row : table) {
            SCOPED_TRACE(row.what);
            entries.clear();
            addIdle("a");
            addDueEntries({"b", "c", "d", "e"});
            entries[2].disabled = 1;
            ASSERT_THAT(startedAt(0), ElementsAre("b"));
            // Due now, but already visited.
            entries[0].nextRun = at(0);
            entries[2].disabled = 0;
            for (const std::size_t position : row.positions)
                if (oneByOne)
                    entries.remove(position);
            if (!oneByOne)
                entries.removeAll(row.positions);
            EXPECT_EQ(startedAt(0), row.startedNext);
            if (row.nextSliceStartsE) {
                EXPECT_THAT(startedAt(0), ElementsAre("e"));
            }
        }
    }
}

TEST_F(EnginePauses, SuspensionEndsTheTick) {
    addDueEntries({"a", "b", "c"});
    startedAt(0);
    engine.setSuspended(true);
    EXPECT_EQ(tickAt(0), TickResult());
    engine.setSuspended(false);
    ASSERT_TRUE(finishAt(1, 1));
    entries[0].nextRun = entries[1].nextRun = at(0);
    EXPECT_THAT(startedAt(2), ElementsAre("a")) << "a new tick must begin at the first entry";
    EXPECT_EQ(entries[0].runStart, at(2));
}

TEST_F(EnginePauses, ClearingTheScheduleEndsTheTick) {
    addDueEntries({"a", "b"});
    startedAt(0);
    entries.clear();
    addDue("c");
    EXPECT_THAT(startedAt(5), ElementsAre("c"));
    EXPECT_EQ(entries[0].runStart, at(5));
}

TEST_F(EnginePauses, RestOfTheTickWaitsWhenSideBySideRunsAreTurnedOff) {
    for (const bool ended : {false, true}) {
        entries.clear();
        policy.runMultiple = true;
        addDueEntries({"a", "b", "c"});
        EXPECT_EQ(tickAt(0), paused);
        policy.runMultiple = false;
        if (ended) {
            ASSERT_TRUE(finishAt(1, 1));
        }
        EXPECT_EQ(tickAt(5), ended ? finished : TickResult());
        EXPECT_EQ(entries[1].running, ended);
        EXPECT_EQ(entries[1].waitingSince, ended ? base::TimeValue() : at(0));
        EXPECT_EQ(entries[2].waitingSince, at(0));
    }
}

TEST_F(EnginePauses, ManualRunDuringAPauseIsNotPartOfTheTick) {
    addDueEntries({"a", "b", "c"});
    startedAt(0);
    engine.runEntry(1, at(4), true);
    EXPECT_EQ(entries[1].runStart, at(4));
    EXPECT_THAT(startedAt(5), ElementsAre("c"));
    EXPECT_EQ(entries[2].runStart, at(0));
}

TEST_F(EnginePauses, TestCommandVisitsAllEntriesAndKeepsAnUnfinishedTick) {
    addDueEntries({"visited", "a", "b", "c"});
    entries[0].disabled = 1;
    startedAt(0);
    entries[0].disabled = 0;
    entries[3].disabled = 1;
    clock.set(at(6));
    engine.testTick();
    EXPECT_EQ(entries[0].runStart, at(6));
    EXPECT_EQ(entries[2].runStart, at(6));
    EXPECT_THAT(log, ElementsAre("launch a as run 1", "redraw", "redraw")) << "must not launch";

    entries[0].running = 0;
    entries[3].disabled = 0;
    EXPECT_THAT(startedAt(9), ElementsAre("c"));
    EXPECT_EQ(entries[3].runStart, at(0));
}

} // namespace
} // namespace scheduler
