#include "scheduler/model/scheduledproject.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <type_traits>

namespace {

using base::TimeValue;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

TEST(ScheduledProject, ANewEntryHasTheDefaults) {
    const ScheduledProject entry;
    EXPECT_EQ(entry.path, "");
    EXPECT_EQ(entry.lastResult, "");
    EXPECT_EQ(entry.lastRun, TimeValue(0));
    EXPECT_EQ(entry.kind, ScheduleKind::AfterProject);
    EXPECT_EQ(entry.time, TimeValue(0));
    EXPECT_EQ(entry.minutes, 0);
    EXPECT_EQ(entry.afterIndex, 0);
    EXPECT_THAT(entry.weekdays, testing::ElementsAre(1, 1, 1, 1, 1, 1, 1));
    EXPECT_EQ(entry.dayOfMonth, 1);
    EXPECT_EQ(entry.runCommand, RunCommand::RunNormally);
    EXPECT_EQ(entry.dialupEntry, "");
    EXPECT_EQ(entry.timeLimitMinutes, 0);
    EXPECT_EQ(entry.disconnectWhenDone, 0);
    EXPECT_EQ(entry.disabled, 0);
    EXPECT_EQ(entry.running, 0);
    EXPECT_EQ(entry.waitingSince, TimeValue(0));
    EXPECT_EQ(entry.runStart, TimeValue(0));
    EXPECT_EQ(entry.runNumber, 0);
    EXPECT_EQ(entry.nextRun, TimeValue(0));
    EXPECT_EQ(entry.retryLimit, 0u);
    EXPECT_EQ(entry.retriesDone, 0u);
    EXPECT_EQ(entry.retryIntervalMinutes, 15);
}

TEST(ScheduledProject, KindsAndCommandsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(ScheduleKind::AfterProject), 0);
    EXPECT_EQ(static_cast<int>(ScheduleKind::AtStartup), 1);
    EXPECT_EQ(static_cast<int>(ScheduleKind::Hourly), 2);
    EXPECT_EQ(static_cast<int>(ScheduleKind::Daily), 3);
    EXPECT_EQ(static_cast<int>(ScheduleKind::Monthly), 4);
    EXPECT_EQ(static_cast<int>(ScheduleKind::Once), 5);
    EXPECT_EQ(scheduler::kindCount, 6);
    EXPECT_EQ(static_cast<int>(RunCommand::RunNormally), 0);
    EXPECT_EQ(static_cast<int>(RunCommand::RunUpdateOnly), 1);
    EXPECT_EQ(static_cast<int>(RunCommand::RelinkFiles), 2);
    EXPECT_EQ(static_cast<int>(RunCommand::RunCompleteRefresh), 3);
    EXPECT_THAT(scheduler::runCommandNames, testing::ElementsAre("Run normally", "Run update only",
                                                                 "Relink files", "Run complete refresh"));
}

TEST(ScheduledProject, CountsOfRetriesReachTheirFullRange) {
    EXPECT_EQ(std::numeric_limits<decltype(ScheduledProject::retryLimit)>::max(), 0xFFFFFFFF);
    EXPECT_TRUE((std::is_same_v<decltype(ScheduledProject::minutes), std::int32_t>));
}

TEST(ScheduledProject, ACopyHasEveryFieldAndItsOwnTexts) {
    const ScheduledProject original = test::filledEntry();
    ScheduledProject copy = original;
    EXPECT_EQ(copy, original);
    copy.path[0] = 'D';
    copy.lastResult.clear();
    copy.dialupEntry += '!';
    EXPECT_EQ(original, test::filledEntry());
}

TEST(ScheduledProject, OnlyTheExactPrefixMakesACommandLine) {
    struct Row {
        const char* path;
        bool isCommandLine;
    };
    for (const Row& row :
         {Row{"run:", true}, Row{"run: cmd /c exit", true}, Row{"RUN:cmd", false}, Row{"Run:cmd", false},
          Row{" run:cmd", false}, Row{"run", false}, Row{"", false}}) {
        ScheduledProject entry;
        entry.path = row.path;
        EXPECT_EQ(isCommandLine(entry), row.isCommandLine) << row.path;
        EXPECT_EQ(scheduler::isCommandLine(row.path), row.isCommandLine) << row.path;
    }
}

TEST(ScheduledProject, ResettingTheRunStateLeavesEverythingElse) {
    ScheduledProject expected = test::filledEntry();
    expected.running = 0;
    expected.waitingSince = TimeValue(0);
    expected.runStart = TimeValue(0);
    expected.runNumber = 0;
    expected.retriesDone = 0;

    ScheduledProject entry = test::filledEntry();
    scheduler::resetRunState(entry);
    EXPECT_EQ(entry, expected);
}

} // namespace
