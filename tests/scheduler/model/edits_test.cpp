#include "scheduler/model/edits.h"
#include "tests/support/allocations.h"
#include "tests/support/filledentry.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using scheduler::applyEdit;
using scheduler::ScheduledProject;
using test::filledEntry;

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

TEST(ApplyEdit, TakesWhatAUserSetsAndNothingElse) {
    // No field of one has the value that it has in the other.
    const ScheduledProject filled = filledEntry();
    const ScheduledProject blank;
    for (const auto& [entry, edited] : {std::pair{filled, blank}, std::pair{blank, filled}}) {
        ScheduledProject changed = entry;
        applyEdit(changed, edited);
        EXPECT_EQ(changed, withUsersFieldsOf(entry, edited));
        EXPECT_NE(changed, entry);
        EXPECT_NE(changed, edited);
    }
}

TEST(ApplyEdit, TakesNoMemory) {
    ScheduledProject edited = filledEntry();
    edited.path = "C:\\Sites\\a path that lies outside its string.kra";
    edited.dialupEntry = "a name that lies outside its string";
    const ScheduledProject expected = edited;
    ScheduledProject entry;
    {
        const test::RefusedAllocations refused;
        EXPECT_NO_THROW(applyEdit(entry, std::move(edited)));
    }
    EXPECT_EQ(entry.path, expected.path);
    EXPECT_EQ(entry.dialupEntry, expected.dialupEntry);
}

TEST(ApplyEdit, ARunThatEndedMeanwhileStaysRecorded) {
    ScheduledProject entry = filledEntry();
    entry.running = 1;
    ScheduledProject edited = entry;
    edited.minutes = 7;
    entry.running = 0;
    entry.lastResult = "404 not found";
    entry.lastRun = base::TimeValue(1000);

    applyEdit(entry, edited);
    EXPECT_EQ(entry.minutes, 7);
    EXPECT_EQ(entry.running, 0);
    EXPECT_EQ(entry.lastResult, "404 not found");
    EXPECT_EQ(entry.lastRun, base::TimeValue(1000));
}

TEST(ApplyEdit, ARunThatStartedMeanwhileGoesOn) {
    ScheduledProject entry;
    ScheduledProject edited = entry;
    edited.path = "C:\\Sites\\other.kra";
    entry.running = 1;
    entry.runNumber = 3;
    entry.runStart = base::TimeValue(2000);

    applyEdit(entry, edited);
    EXPECT_EQ(entry.path, "C:\\Sites\\other.kra");
    EXPECT_EQ(entry.running, 1);
    EXPECT_EQ(entry.runNumber, 3);
    EXPECT_EQ(entry.runStart, base::TimeValue(2000));
}

} // namespace
