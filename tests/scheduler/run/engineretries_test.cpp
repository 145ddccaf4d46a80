#include "tests/scheduler/run/enginefixture.h"
#include "tests/support/schedulekinds.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::ElementsAre;

// Retries

TEST_F(SchedulerEngineTest, FailedRunIsRetriedUpToItsLimit) {
    addDue("a.kra");
    entries[0].retryLimit = 2;
    addFollower("b.kra", 0, 10);
    constexpr std::int32_t interval = 15 * 60 + 5;

    tickAt(0);
    EXPECT_TRUE(finishAt(100, 1, {"failed", 1}));
    EXPECT_THAT(log, ElementsAre("take outcome 1", "redraw", "save"));
    EXPECT_EQ(entries[0].nextRun, at(100 + interval));
    EXPECT_EQ(entries[0].retriesDone, 1u);
    EXPECT_EQ(entries[0].lastResult, "failed");
    EXPECT_EQ(entries[1].nextRun, TimeValue::never()) << "the chain sleeps while a run is retried";

    tickAt(100 + interval - 1);
    EXPECT_EQ(entries[0].running, 0);
    tickAt(100 + interval);
    EXPECT_EQ(entries[0].running, 1);
    EXPECT_TRUE(finishAt(2000, 1, {"failed again", 1}));
    EXPECT_EQ(entries[0].nextRun, at(2000 + interval));
    EXPECT_EQ(entries[0].retriesDone, 2u);

    tickAt(2000 + interval);
    EXPECT_TRUE(finishAt(4000, 1, {"failed for good", 1}));
    EXPECT_EQ(entries[0].nextRun, TimeValue::never());
    EXPECT_EQ(entries[0].retriesDone, 0u);
    EXPECT_EQ(entries[1].nextRun, at(4000 + 600));
}

TEST_F(SchedulerEngineTest, GoodRunForgetsEarlierRetries) {
    addDue("a.kra");
    entries[0].retryLimit = 2;
    entries[0].retriesDone = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(1, 1, {"", 0}));
    EXPECT_EQ(entries[0].retriesDone, 0u);
}

TEST_F(SchedulerEngineTest, RetriesAreCountedUnsigned) {
    struct Row {
        std::uint32_t limit, done, error;
        bool retried;
    };
    const Row rows[] = {
        {0, 0, 1, false},          {1, 0, 1, true},          {1, 1, 1, false},
        {1, 2, 1, false},          {0xFFFFFFFF, 7, 1, true}, {0xFFFFFFFF, 0x80000000, 1, true},
        {1, 0xFFFFFFFF, 1, false}, {1, 0, 0x80000000, true}, {1, 0, 0, false},
    };
    for (const Row& row : rows) {
        entries.clear();
        addRunning("a.kra", 1);
        entries[0].retryLimit = row.limit;
        entries[0].retriesDone = row.done;
        EXPECT_TRUE(finishAt(0, 1, {"", row.error}));
        EXPECT_EQ(entries[0].retriesDone, row.retried ? row.done + 1 : 0) << row.limit << " " << row.done;
    }
}

TEST_F(SchedulerEngineTest, RetryIntervalIsTheEntrysOwn) {
    for (const std::int32_t minutes : {0, 1, 90, -1}) {
        entries.clear();
        addRunning("a.kra", 1);
        entries[0].retryLimit = 1;
        entries[0].retryIntervalMinutes = minutes;
        EXPECT_TRUE(finishAt(10, 1, {"", 1}));
        EXPECT_EQ(entries[0].nextRun, at(10 + minutes * 60 + 5));
    }
}

// Chains

TEST_F(SchedulerEngineTest, FollowerIsDueItsMinutesAfterTheEndEvenWhenDisabled) {
    addDue("a.kra");
    addFollower("b.kra", 0, 10);
    entries[1].disabled = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(100, 1));
    EXPECT_EQ(entries[1].nextRun, at(100 + 600));
    tickAt(100 + 600);
    EXPECT_EQ(entries[1].running, 0) << "it does not run while disabled";
    entries[1].disabled = 0;
    tickAt(100 + 601);
    EXPECT_EQ(entries[1].running, 1);
}

TEST_F(SchedulerEngineTest, EveryFollowerIsWokenAndNobodyElse) {
    policy.runMultiple = true;
    addFollower("before.kra", 1, 1);
    addDue("a.kra");
    addFollower("at once.kra", 1, 0);
    addFollower("other.kra", 2, 3);
    addFollower("behind.kra", 1, 4);
    ScheduledProject hourly = idleEntry("hourly.kra");
    hourly.kind = ScheduleKind::Hourly;
    hourly.afterIndex = 1;
    add(hourly);
    ScheduledProject unknown = hourly;
    unknown.kind = test::unknownKind;
    add(unknown);
    addRunning("running.kra", 8).afterIndex = 1;
    tickAt(0);
    EXPECT_TRUE(finishAt(50, 9));
    EXPECT_EQ(entries[0].nextRun, at(50 + 60));
    EXPECT_EQ(entries[2].nextRun, at(50));
    EXPECT_EQ(entries[3].nextRun, TimeValue::never());
    EXPECT_EQ(entries[4].nextRun, at(50 + 240));
    EXPECT_EQ(entries[5].nextRun, TimeValue::never());
    EXPECT_EQ(entries[6].nextRun, TimeValue::never());
    EXPECT_EQ(entries[7].nextRun, at(50)) << "a running one, too";
    EXPECT_TRUE(finishAt(60, 8));
    EXPECT_EQ(entries[7].nextRun, TimeValue::never()) << "until its predecessor ends again";
}

TEST_F(SchedulerEngineTest, EntryThatFollowsItselfGoesOnForEver) {
    addDue("a.kra");
    entries[0].afterIndex = 0;
    entries[0].minutes = 2;
    tickAt(0);
    EXPECT_TRUE(finishAt(10, 1));
    EXPECT_EQ(entries[0].nextRun, at(10 + 120));
}

} // namespace
} // namespace scheduler
