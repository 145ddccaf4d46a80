#include "scheduler/model/edits.h"
#include "scheduler/model/scheduledproject.h"
#include "tests/scheduler/model/entries.h"
#include "tests/support/filledentry.h"
#include "tests/support/plainentries.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using scheduler::ScheduledProject;

TEST(ScheduledProject, HasTheDefaultValues) {
    EXPECT_EQ(plain::itemOf(ScheduledProject()), plain::Item());
}

TEST(ScheduledProject, IsACommandLineOnlyWithTheExactPrefix) {
    for (const char* path : {"run:", "run: cmd /c exit"})
        EXPECT_TRUE(isCommandLine(test::withPath(path))) << path;
    for (const char* path : {"RUN:cmd", "Run:cmd", " run:cmd", "run", ""})
        EXPECT_FALSE(isCommandLine(test::withPath(path))) << path;
}

TEST(ScheduledProject, ResettingTheRunStateKeepsTheOtherFields) {
    ScheduledProject entry = test::filledEntry();
    plain::Item expected = plain::itemOf(entry);
    expected.runs = 0;
    expected.waitsSince = expected.began = 0;
    expected.number = 0;
    expected.retried = 0;
    scheduler::resetRunState(entry);
    EXPECT_EQ(plain::itemOf(entry), expected);
}

/// Names every field, so that a new field does not compile until it is added here.
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

TEST(ScheduledProject, EditChangesOnlyTheUsersFields) {
    // These two differ in every field.
    const ScheduledProject filled = test::filledEntry();
    const ScheduledProject blank;
    for (const auto& [entry, edited] : {std::pair{filled, blank}, std::pair{blank, filled}}) {
        ScheduledProject changed = entry;
        applyEdit(changed, edited);
        EXPECT_EQ(changed, withUsersFieldsOf(entry, edited));
    }
}

} // namespace
