// What the list says of tomorrow and today while the day changes. Its clock starts well before midnight, and
// is set to shortly before it once all is there.

#include "tests/program/listdriver.h"
#include "tests/program/scheduledriver.h"
#include "tests/program/settableclock.h"
#include "tests/program/witnessdriver.h"

#include <gtest/gtest.h>

#include <chrono>

using base::TimeSpan;
using base::TimeValue;
using driver::lastRunColumn;
using driver::nextRunColumn;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

constexpr std::chrono::minutes limit(2);

bool beginsWith(const std::string& text, const std::string& beginning) {
    return text.compare(0, beginning.size(), beginning) == 0;
}

TEST(Midnight, TurnsTomorrowIntoTodayAndTodayIntoYesterdayByItself) {
    driver::SettableClock clock;
    const TimeValue start = TimeValue::now();
    ASSERT_TRUE(clock.isThere() && start.hour() == 22) << "this test needs a clock of its own";
    ScheduledProject entry;
    entry.path = "C:\\Sites\\news.kra";
    entry.kind = ScheduleKind::Once;
    entry.time = start + TimeSpan::fromMinutes(20 * 60); // tomorrow evening
    entry.lastRun = start - TimeSpan::fromMinutes(20 * 60);
    ScheduledProject still = entry;
    still.kind = ScheduleKind::AtStartup;
    still.lastRun = TimeValue();
    driver::saveEntries({entry, still});

    driver::SchedulerProcess scheduler;
    ASSERT_TRUE(scheduler.start());
    const driver::ListDriver list(scheduler.window());
    const driver::WitnessDriver witness(scheduler.window(), list.handle());
    ASSERT_TRUE(witness.isThere());
    ASSERT_EQ(TimeValue::now().day(), start.day()) << "too late for this test";
    EXPECT_TRUE(beginsWith(list.cell(0, nextRunColumn), "tomorrow at ")) << list.cell(0, nextRunColumn);
    EXPECT_TRUE(beginsWith(list.cell(0, lastRunColumn), "today at ")) << list.cell(0, lastRunColumn);

    constexpr int secondsLeft = 5;
    constexpr int secondsOfDay = 24 * 60 * 60;
    clock.moveBy(secondsOfDay - secondsLeft - scheduler::timeOfDay(TimeValue::now()).seconds());
    LONG before = 0; // paintings until midnight
    const auto isPaintedAfterMidnight = [&] {
        const bool isNextDay = TimeValue::now().day() != start.day();
        if (!isNextDay)
            before = witness.paints();
        return isNextDay && witness.paints() > before;
    };
    ASSERT_TRUE(waitUntil(isPaintedAfterMidnight, limit)) << "nothing was painted";
    EXPECT_TRUE(beginsWith(list.cell(0, nextRunColumn), "today at ")) << list.cell(0, nextRunColumn);
    EXPECT_TRUE(beginsWith(list.cell(0, lastRunColumn), "yesterday at ")) << list.cell(0, lastRunColumn);
}

} // namespace
