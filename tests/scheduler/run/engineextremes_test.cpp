#include "tests/scheduler/run/enginefixture.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <random>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::_;

// Values from a damaged file

TEST_F(SchedulerEngineTest, DelaysWrapAround) {
    addRunning("a.kra", 1).retryLimit = 1;
    entries[0].retryIntervalMinutes = highest;
    EXPECT_TRUE(finishAt(0, 1, {"", 1}));
    EXPECT_EQ(entries[0].nextRun, at(-60 + 5)) << "2147483647 minutes are -60 seconds";

    entries.clear();
    addRunning("a.kra", 1);
    addFollower("b.kra", 0, highest);
    addFollower("c.kra", 0, lowest);
    EXPECT_TRUE(finishAt(0, 1));
    EXPECT_EQ(entries[1].nextRun, at(-60));
    EXPECT_EQ(entries[2].nextRun, at(0));
}

TEST_F(SchedulerEngineTest, RunNumbersWrapAround) {
    policy.runMultiple = true;
    addRunning("a.kra", highest);
    addDue("b.kra");
    tickAt(0);
    EXPECT_EQ(entries[1].runNumber, lowest);
    EXPECT_TRUE(finishAt(1, 0x80000000u));
    EXPECT_EQ(entries[1].running, 0);
}

TEST_F(SchedulerEngineTest, NoValueOfAnyFieldIsTooOdd) {
    std::mt19937 random(20261121);
    const std::int32_t odd[] = {lowest, lowest + 1, -60,         -1,      0,           1,
                                59,     60,         highest - 1, highest, startSeconds};
    const auto pick = [&] { return odd[random() % std::size(odd)]; };
    EXPECT_CALL(messages, showNotice(_)).Times(testing::AnyNumber());
    for (int round = 0; round < 300; ++round) {
        entries.clear();
        for (int i = 0; i < 5; ++i) {
            ScheduledProject& entry = add(idleEntry(random() % 4 == 0 ? "run:x" : "a.kra"));
            entry.kind = static_cast<ScheduleKind>(
                static_cast<std::int32_t>(random() % (scheduler::kindCount + 2)) - 1);
            entry.time = TimeValue(pick());
            entry.minutes = pick();
            entry.afterIndex = static_cast<std::int32_t>(random() % 6) - 1;
            entry.dayOfMonth = pick();
            entry.running = static_cast<std::uint8_t>(random() % 3);
            entry.disabled = random() % 4 == 0 ? 255 : 0;
            entry.waitingSince = TimeValue(pick());
            entry.runStart = TimeValue(pick());
            entry.runNumber = pick();
            entry.nextRun = TimeValue(pick());
            entry.retryLimit = static_cast<std::uint32_t>(pick());
            entry.retriesDone = static_cast<std::uint32_t>(pick());
            entry.retryIntervalMinutes = pick();
        }
        policy = {false, static_cast<std::uint32_t>(pick()), random() % 2 == 0};
        launcher.threadsStart = random() % 4 != 0;
        for (int step = 0; step < 10; ++step) {
            clock.set(TimeValue(pick()));
            engine.onTimer(TimeValue(pick()));
            const std::uint32_t number = static_cast<std::uint32_t>(pick());
            outcomes.left[number] = {"", static_cast<std::uint32_t>(pick())};
            engine.onRunFinished(number);
            engine.runEntry(random() % 5, TimeValue(pick()), true);
            engine.setSuspended(random() % 2 == 0);
        }
        engine.resetAll(TimeValue(pick()));
        EXPECT_FALSE(engine.anyRunning());
        log.clear();
    }
}

// What it costs

TEST_F(SchedulerEngineTest, ATickWithNothingDueTakesNoMemory) {
    for (int i = 0; i < 100; ++i)
        addIdle("idle");
    const std::size_t before = test::allocationCount;
    engine.onTimer(at(0));
    EXPECT_EQ(test::allocationCount, before);
}

TEST_F(SchedulerEngineTest, RunsLeaveNoMemoryBehind) {
    addDue("C:\\Projects\\one with a name that needs memory.kra");
    const auto run = [&](std::int32_t second, const char* result) {
        entries[0].nextRun = at(second);
        tickAt(second);
        ASSERT_EQ(launcher.launched.size(), 1U);
        const auto number = static_cast<std::uint32_t>(launcher.launched[0].number);
        launcher.launched.clear();
        ASSERT_TRUE(finishAt(second, number, {result, 0}));
    };
    run(0, "a result that needs memory");
    const std::size_t before = test::heldBlocks();
    for (std::int32_t second = 1; second <= 1000; ++second)
        run(second, "a result that needs memory");
    EXPECT_EQ(test::heldBlocks(), before);
}

TEST_F(SchedulerEngineTest, ASweepOverTheScheduleReadsTheClockOnce) {
    class CountingClock : public base::Clock {
    public:
        TimeValue now() const override {
            ++reads;
            return at(0);
        }
        mutable int reads = 0;
    };
    const CountingClock counting;
    SchedulerEngine watched(entries, policy, {counting, launcher, outcomes, store, messages, listener});
    for (int i = 0; i < 100; ++i) {
        addIdle("calendar");
        entries[entries.size() - 1].kind = i % 2 == 0 ? ScheduleKind::Daily : ScheduleKind::Monthly;
    }
    watched.resetAll(at(0));
    EXPECT_EQ(counting.reads, 1);
    watched.recomputeAll(at(0));
    EXPECT_EQ(counting.reads, 2);
}

} // namespace
} // namespace scheduler
