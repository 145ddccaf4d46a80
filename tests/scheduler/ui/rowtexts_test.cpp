#include "scheduler/ui/schedulerows.h"
#include "tests/support/fakeclock.h"

#include <gtest/gtest.h>

namespace {

TEST(RowTexts, AreThoseOfTheClocksTimeAndEmptyInAnUnknownColumn) {
    const test::FakeClock clock{base::TimeValue(1'781'500'000)};
    scheduler::ScheduleList schedule;
    schedule.append({});
    const scheduler::ScheduleRows rows(
        schedule, [] { return scheduler::EngineState{}; }, clock);
    EXPECT_EQ(rows.now(), base::TimeValue(1'781'500'000));
    EXPECT_EQ(rows.text(0, static_cast<scheduler::ScheduleColumn>(6)), "");
}

} // namespace
