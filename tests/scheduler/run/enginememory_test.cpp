#include "tests/scheduler/run/enginefixture.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <exception>
#include <new>
#include <string>

namespace scheduler {
namespace {

using base::TimeValue;
using testing::_;
using testing::ElementsAre;

class EngineMemory : public SchedulerEngineTest {};

TEST_F(EngineMemory, RunEndsWithoutMemoryForItsResult) {
    policy.waitTime = 1;
    launcher.failure = std::make_exception_ptr(std::bad_alloc());
    addDue("a.kra");
    addRunning("running", 1);
    log.reserve(10);
    for (const bool conflicts : {false, true}) {
        log.clear();
        entries[0].nextRun = at(0);
        entries[0].waitingSince = at(1);
        policy.runMultiple = !conflicts;
        {
            const test::RefusedAllocations refused;
            EXPECT_NO_THROW(engine.onTimer(at(1000)));
        }
        EXPECT_EQ(entries[0].running, 0);
        EXPECT_EQ(entries[0].lastRun, at(1000));
        EXPECT_EQ(entries[0].nextRun, TimeValue::never());
        EXPECT_THAT(log, ElementsAre("save", "redraw"));
    }
}

TEST_F(EngineMemory, FailedManualRunEndsWithoutMemoryForItsNotice) {
    launcher.threadsStart = false;
    EXPECT_CALL(messages, showNotice(_)).WillOnce([](const std::string&) { throw std::bad_alloc(); });
    addIdle("a.kra");
    EXPECT_NO_THROW(engine.runEntry(0, at(5), true));
    EXPECT_EQ(entries[0].running, 0);
    EXPECT_EQ(entries[0].lastResult, systemError);
}

TEST_F(EngineMemory, IsNotAllocatedByATickWithNothingDue) {
    addIdle("idle");
    const std::size_t before = test::allocationCount;
    engine.onTimer(at(0));
    EXPECT_EQ(test::allocationCount, before);
}

TEST_F(EngineMemory, IsNotLeakedByRuns) {
    addDue("C:\\Projects\\one with a name that needs memory.kra");
    const auto run = [this](std::int32_t second) {
        entries[0].nextRun = at(second);
        tickAt(second);
        launcher.launched.clear();
        ASSERT_TRUE(finishAt(second, 1, {"a result that needs memory", 0}));
    };
    run(0);
    const std::size_t before = test::heldBlocks();
    for (std::int32_t second = 1; second <= 100; ++second)
        run(second);
    EXPECT_EQ(test::heldBlocks(), before);
}

} // namespace
} // namespace scheduler
