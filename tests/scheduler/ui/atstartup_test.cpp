#include "lib/base/base.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/worker.h"
#include "scheduler/ui/mainwindow.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace {

TEST(AtStartup, AnEntryRunsOnceAfterALogOn) {
    scheduler::ScheduledProject entry;
    entry.path = "run:no such program";
    entry.kind = scheduler::ScheduleKind::AtStartup;
    scheduler::ScheduleList schedule;
    schedule.append(entry);
    ASSERT_TRUE(scheduler::saveSchedule(schedule));
    base::applicationName = "Corvane Scheduler";
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));

    SendMessageA(window.handle(), WM_TIMER, 1, 0);
    SendMessageA(window.handle(), scheduler::WM_RUN_FINISHED, 1, 0);
    ASSERT_TRUE(scheduler::loadSchedule(schedule, scheduler::scheduleMagic));
    EXPECT_NE(schedule[0].lastRun, base::TimeValue()) << "it has run";
    EXPECT_EQ(schedule[0].nextRun, base::TimeValue::never());
}

} // namespace
