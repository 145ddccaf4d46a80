#include "tests/scheduler/run/enginefixture.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <optional>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::ElementsAre;
using testing::IsEmpty;

class EngineWaiting : public SchedulerEngineTest {};

TEST_F(EngineWaiting, SecondOfTwoDueEntriesWaitsForTheFirstToEnd) {
    addDue("a.kra");
    addDue("b.kra");
    tickAt(5);
    EXPECT_THAT(log, ElementsAre("launch a.kra as run 1", "redraw"));
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[1].waitingSince, at(5));
    EXPECT_TRUE(engine.isDue(1, at(5))) << "must stay due";
    EXPECT_TRUE(finishAt(6, 1));
    EXPECT_EQ(entries[1].running, 0) << "must wait for the next tick";
    tickAt(7);
    EXPECT_THAT(log, ElementsAre("launch b.kra as run 1", "redraw"));
    EXPECT_EQ(entries[1].waitingSince, at(5)) << "must be kept until the end of the run";
    EXPECT_TRUE(finishAt(9, 1));
    EXPECT_EQ(entries[1].waitingSince, TimeValue());
    EXPECT_EQ(entries[1].lastRun, at(7));
}

TEST_F(EngineWaiting, WaitEndsOneMinuteAfterTheWaitTimeAndRedrawsEachTickAfterTheFirst) {
    const struct {
        std::optional<std::uint32_t> minutes; ///< from the preferences; 20 if none
        std::int32_t end;
    } rows[] = {{{}, 1260}, {0, 60}, {1, 120}, {600, 36'060}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.end);
        entries.clear();
        addRunning("a.kra", 1);
        addDue("b.kra");
        if (row.minutes)
            policy.waitTime = *row.minutes;
        EXPECT_EQ(tickAt(0), TickResult());
        EXPECT_THAT(log, IsEmpty());
        for (const std::int32_t second : {1, row.end - 60, row.end - 1}) {
            EXPECT_EQ(tickAt(second), (TickResult{.changed = true}));
            EXPECT_THAT(log, ElementsAre("redraw"));
            EXPECT_EQ(entries[1].waitingSince, at(0)) << second;
            EXPECT_EQ(entries[1].lastResult, "");
        }
        tickAt(row.end);
        EXPECT_EQ(entries[1].waitingSince, TimeValue());
        EXPECT_EQ(entries[1].lastResult, conflict);
    }
}

TEST_F(EngineWaiting, GivingUpIsASuccessfulRunOfNoDuration) {
    addRunning("a.kra", 6);
    ScheduledProject& entry = addDue("b.kra", ScheduleKind::Hourly);
    entry.minutes = 7;
    entry.retryLimit = 5;
    entry.retriesDone = 2;
    addFollower("c.kra", 1, 10);
    policy.waitTime = 0;
    tickAt(0);
    EXPECT_EQ(tickAt(500), (TickResult{.changed = true}));
    EXPECT_THAT(log, ElementsAre("save", "redraw")) << "must not launch or read an outcome";
    EXPECT_EQ(entries[1].running, 0);
    EXPECT_EQ(entries[1].runNumber, 7);
    EXPECT_EQ(entries[1].runStart, at(500));
    EXPECT_EQ(entries[1].lastRun, at(500));
    EXPECT_EQ(entries[1].lastResult, conflict);
    EXPECT_EQ(entries[1].retriesDone, 0u) << "must not be retried";
    EXPECT_EQ(entries[1].nextRun, at(3600 + 7 * 60));
    EXPECT_EQ(entries[2].nextRun, at(500 + 600)) << "the follower must be scheduled";
    EXPECT_EQ(tickAt(501), TickResult()) << "must no longer be due";
}

TEST_F(EngineWaiting, WaitedMinutesAreComparedUnsigned) {
    const struct {
        std::int32_t waitingSince, now;
        std::uint32_t waitTime;
        bool givesUp;
    } rows[] = {
        // If the clock was set back by less than a minute, the wait is 0 minutes. Otherwise the wait is huge.
        {1000, 941, 0, false},
        {1000, 940, 0, true},
        {1000, 940, 0xFFFFFFFE, true},
        {1000, 940, 0xFFFFFFFF, false},
        {highest, 1, 35'791'393, true},
        // Wait times of 68 years and more.
        {1, highest, 0x7FFFFFFF, false},
        {1, highest, 35'791'394, false},
        {1, highest, 35'791'393, true},
        // A time from a damaged file, so old that the difference wraps around.
        {lowest, highest, 0xFFFFFFFF, false},
        {lowest, highest, 0, false},
        {lowest, 0, 0x7FFFFFFF, true},
    };
    for (const auto& row : rows) {
        entries.clear();
        addRunning("a.kra", 1);
        ScheduledProject& entry = addIdle("b.kra");
        entry.nextRun = TimeValue(row.now);
        entry.waitingSince = TimeValue(row.waitingSince);
        policy.waitTime = row.waitTime;
        engine.onTimer(TimeValue(row.now));
        EXPECT_EQ(entry.lastResult, row.givesUp ? conflict : "")
            << row.waitingSince << " " << row.now << " " << row.waitTime;
    }
}

} // namespace
} // namespace scheduler
