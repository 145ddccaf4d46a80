#include "scheduler/model/edits.h"
#include "scheduler/model/scheduledproject.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>

#include <utility>

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

TEST(ScheduledProject, IsACommandLineWithTheExactPrefixOnly) {
    for (const char* path : {"run:", "run: cmd /c exit"})
        EXPECT_TRUE(isCommandLine(test::withPath(path))) << path;
    for (const char* path : {"RUN:cmd", "Run:cmd", " run:cmd", "run", ""})
        EXPECT_FALSE(isCommandLine(test::withPath(path))) << path;
}

TEST(ScheduledProject, KeepsEverythingElseWhenItsRunStateIsReset) {
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

/// Field by field, so that a field that is added to the record has to find its side.
ScheduledProject withUsersFieldsOf(ScheduledProject entry, const ScheduledProject& user) {
    auto& [path, lastResult, lastRun, kind, time, minutes, afterIndex, weekdays, dayOfMonth, runCommand,
           dialupEntry, timeLimitMinutes, disconnectWhenDone, disabled, running, waitingSince, runStart,
           runNumber, nextRun, retryLimit, retriesDone, retryIntervalMinutes] = entry;
    path = user.path;
    kind = user.kind;
    time = user.time;
    minutes = user.minutes;
    afterIndex = user.afterIndex;
    weekdays = user.weekdays;
    dayOfMonth = user.dayOfMonth;
    runCommand = user.runCommand;
    dialupEntry = user.dialupEntry;
    timeLimitMinutes = user.timeLimitMinutes;
    disconnectWhenDone = user.disconnectWhenDone;
    return entry;
}

TEST(ScheduledProject, TakesFromAnEditWhatAUserSetsAndNothingElse) {
    // No field of one has the value that it has in the other.
    const ScheduledProject filled = test::filledEntry();
    const ScheduledProject blank;
    for (const auto& [entry, edited] : {std::pair{filled, blank}, std::pair{blank, filled}}) {
        ScheduledProject changed = entry;
        applyEdit(changed, edited);
        EXPECT_EQ(changed, withUsersFieldsOf(entry, edited));
    }
}

} // namespace
