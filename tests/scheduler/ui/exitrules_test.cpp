#include "scheduler/ui/exitrules.h"

#include <gtest/gtest.h>

namespace {

using base::TimeValue;
using scheduler::hasPendingRun;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;

ScheduledProject entry(std::int32_t nextRun, bool disabled) {
    ScheduledProject project;
    project.nextRun = TimeValue(nextRun);
    project.disabled = disabled;
    return project;
}

TEST(HasPendingRun, NotInAnEmptySchedule) {
    EXPECT_FALSE(hasPendingRun(ScheduleList()));
}

TEST(HasPendingRun, NotWhenEveryEntryIsDisabledOrNeverDue) {
    ScheduleList list;
    list.assign({entry(0x7FFFFFFF, false), entry(1000, true), entry(0, true)});
    EXPECT_FALSE(hasPendingRun(list));
}

TEST(HasPendingRun, WhenOneEnabledEntryHasANextRun) {
    for (const std::int32_t nextRun : {0, 1, 0x7FFFFFFE}) {
        ScheduleList list;
        list.assign({entry(0x7FFFFFFF, false), entry(nextRun, false)});
        EXPECT_TRUE(hasPendingRun(list)) << nextRun;
    }
}

TEST(HasPendingRun, ARunningEntryWithANextRunCounts) {
    ScheduleList list;
    ScheduledProject running = entry(1000, false);
    running.running = 1;
    list.assign({running});
    EXPECT_TRUE(hasPendingRun(list));
}

} // namespace
