#include "lib/base/base.h"
#include "scheduler/run/runhistory.h"
#include "tests/support/allocations.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakehistorystore.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace scheduler {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The given number of seconds after 8:00 (local time) on 22 November 2026.
base::TimeValue at(std::int32_t seconds) {
    return base::TimeValue::fromLocal(2026, 11, 22, 8, 0, seconds, -1);
}

class RunHistories : public testing::Test {
protected:
    RunHistories() { base::applicationName = "Corvane Scheduler"; }

    ScheduledProject& add(const std::string& path, ScheduleKind kind = ScheduleKind::Hourly) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = kind;
        entry.runNumber = 1;
        schedule.append(std::move(entry));
        return schedule[schedule.size() - 1];
    }
    void finish(ScheduledProject& entry, std::uint32_t errorCode = 0, RunEnd how = RunEnd::Reported) {
        entry.lastRun = at(5);
        history->onRunFinished({entry, at(5), errorCode, how});
    }
    /// A cell of the last line. Columns count from 0.
    std::string cell(int column) const {
        const std::string& line = store.lines.back();
        std::size_t begin = 0;
        for (; column > 0; --column)
            begin = line.find('\t', begin) + 1;
        return line.substr(begin, line.find('\t', begin) - begin);
    }
    std::string causeOf(ScheduledProject& entry, bool manual = false) {
        history->onRunStarted(entry, manual);
        finish(entry);
        return cell(4);
    }
    std::string outcome() const { return cell(5); }

    ScheduleList schedule;
    test::FakeClock clock{at(0)};
    test::FakeHistoryStore store;
    std::unique_ptr<RunHistory> history = std::make_unique<RunHistory>(schedule, clock, store);
};

TEST_F(RunHistories, LineDescribesTheWholeRun) {
    EXPECT_EQ(historyHeader, "Start\tEnd\tSeconds\tProject\tCause\tOutcome\tPath");
    ScheduledProject& entry = add("C:\\Sites\\news.kra");
    history->onRunStarted(entry, false);
    entry.lastRun = at(5);
    history->onRunFinished({entry, at(3723), 0, RunEnd::Reported});
    EXPECT_THAT(store.lines,
                ElementsAre("2026-11-22 08:00:05\t2026-11-22 09:02:03\t3718\tnews\tschedule\tok\t"
                            "C:\\Sites\\news.kra"));
}

TEST_F(RunHistories, EndWithoutAStartHasNoCause) {
    ScheduledProject& entry = add("run:backup.exe");
    history->onRunStarted(entry, true);
    history->onProcessNotStarted(static_cast<std::uint32_t>(entry.runNumber), "File not found");
    history->onRunFinished({entry, at(0), 0, RunEnd::Reported});
    entry.lastRun = at(0);
    history->onRunFinished({entry, at(1), 0, RunEnd::Reported});
    EXPECT_EQ(store.lines.back(),
              "2026-11-22 08:00:00\t2026-11-22 08:00:01\t1\trun:backup.exe\t\tok\trun:backup.exe");
}

TEST_F(RunHistories, DurationIsNegativeWhenTheClockWasSetBack) {
    ScheduledProject& entry = add("run:backup.exe /all");
    history->onRunStarted(entry, false);
    entry.lastRun = at(60);
    history->onRunFinished({entry, at(0), 0, RunEnd::Reported});
    EXPECT_THAT(store.lines,
                ElementsAre("2026-11-22 08:01:00\t2026-11-22 08:00:00\t-60\trun:backup.exe /all\t"
                            "schedule\tok\trun:backup.exe /all"));
}

TEST_F(RunHistories, CauseIsTheScheduleARetryTheFollowedProjectOrTheUser) {
    add("C:\\Sites\\news.kra");
    ScheduledProject& entry = add("C:\\Sites\\shop.krb");
    EXPECT_EQ(causeOf(entry), "schedule");
    entry.kind = ScheduleKind::AfterProject;
    EXPECT_EQ(causeOf(entry), "after news");
    entry.afterIndex = 7;
    EXPECT_EQ(causeOf(entry), "after (unknown)");
    entry.retriesDone = 2;
    EXPECT_EQ(causeOf(entry), "retry 2");
    EXPECT_EQ(causeOf(entry, true), "by hand");
}

TEST_F(RunHistories, CauseIsRecordedAtTheStart) {
    add("C:\\Sites\\news.kra");
    ScheduledProject& entry = add("C:\\Sites\\shop.krb", ScheduleKind::AfterProject);
    history->onRunStarted(entry, false);
    entry.retriesDone = 1;
    entry.afterIndex = 7;
    finish(entry);
    EXPECT_EQ(cell(4), "after news");
}

TEST_F(RunHistories, EachOfSeveralRunsHasItsOwnCause) {
    schedule.assign({ScheduledProject(), ScheduledProject()});
    schedule[0].runNumber = 1;
    schedule[1].runNumber = 2;
    history->onRunStarted(schedule[0], true);
    schedule[1].kind = ScheduleKind::Daily;
    history->onRunStarted(schedule[1], false);
    finish(schedule[0]);
    EXPECT_EQ(cell(4), "by hand");
    finish(schedule[1]);
    EXPECT_EQ(cell(4), "schedule");
}

TEST_F(RunHistories, OutcomeIsTheResultOrTheErrorOrOk) {
    ScheduledProject& project = add("C:\\Sites\\news.kra");
    finish(project);
    EXPECT_EQ(outcome(), "ok");
    finish(project, 5);
    EXPECT_EQ(outcome(), "error 5");
    project.lastResult = "3 pages are missing";
    finish(project, 5);
    EXPECT_EQ(outcome(), "3 pages are missing");
    project.lastResult = "Could not run on schedule; another project was already running.";
    finish(project, 0, RunEnd::GaveUpWaiting);
    EXPECT_EQ(outcome(), "gave up waiting");
    project.lastResult = "A system error prevented the project from running.";
    finish(project, 0, RunEnd::SystemError);
    EXPECT_EQ(outcome(), "system error");
    finish(add("run:backup.exe"), 7);
    EXPECT_EQ(outcome(), "ok") << "a command line's error is only its run number";
}

TEST_F(RunHistories, FailedStartHasTheSystemsReason) {
    ScheduledProject& entry = add("C:\\Sites\\news.kra");
    history->onRunStarted(entry, false);
    history->onProcessNotStarted(2, "the reason of another run");
    history->onProcessNotStarted(1, "File not found.");
    finish(entry);
    EXPECT_EQ(outcome(), "could not be started: File not found.");
    EXPECT_EQ(cell(4), "schedule");
    history->onRunStarted(entry, false);
    finish(entry);
    EXPECT_EQ(outcome(), "ok") << "the reason must not affect the next run";
}

TEST_F(RunHistories, IgnoredEndDoesNotAffectTheNextRunWithItsNumber) {
    ScheduledProject& entry = add("C:\\Sites\\news.kra");
    history->onRunStarted(entry, true);
    history->onProcessNotStarted(1, "File not found.");
    EXPECT_EQ(causeOf(entry), "schedule");
    EXPECT_EQ(outcome(), "ok");
}

TEST_F(RunHistories, TabsAndLineBreaksBecomeSpaces) {
    add("C:\\Sites\\a\tb.kra");
    ScheduledProject& entry = add("", ScheduleKind::AfterProject);
    entry.path = std::string("run:a\tb\r\nc\0\x1F"
                             "d\xE4",
                             14);
    entry.lastResult = "two\nlines";
    history->onRunStarted(entry, false);
    finish(entry);
    EXPECT_THAT(store.lines,
                ElementsAre("2026-11-22 08:00:05\t2026-11-22 08:00:05\t0\trun:a b  c  d\xE4\tafter a b\t"
                            "two lines\trun:a b  c  d\xE4"));
}

TEST_F(RunHistories, ProgramEventsUseTheSameColumns) {
    history->record(ProgramEvent::Started, "C:\\Scheduler\\scheduler.exe");
    history->record(ProgramEvent::NotRead, "C:\\Windows\\schedule.dat");
    history->record(ProgramEvent::Suspended);
    clock.set(at(1));
    history->record(ProgramEvent::Resumed);
    history->record(ProgramEvent::NotSaved, "C:\\Windows\\schedule.dat", "Access is denied.");
    history->record(ProgramEvent::SessionEnd);
    const std::string begin = "2026-11-22 08:00:00\t2026-11-22 08:00:00\t0\tCorvane Scheduler\t\t";
    const std::string later = "2026-11-22 08:00:01\t2026-11-22 08:00:01\t0\tCorvane Scheduler\t\t";
    EXPECT_THAT(
        store.lines,
        ElementsAre(begin + "started\tC:\\Scheduler\\scheduler.exe",
                    begin + "schedule could not be read\tC:\\Windows\\schedule.dat", begin + "suspended\t",
                    later + "resumed\t",
                    later + "schedule could not be saved: Access is denied.\tC:\\Windows\\schedule.dat",
                    later + "log-off or shutdown\t"));
}

TEST_F(RunHistories, DestructionRecordsTheExitOfAStartedProgram) {
    history.reset();
    EXPECT_THAT(store.lines, IsEmpty());
    history = std::make_unique<RunHistory>(schedule, clock, store);
    history->record(ProgramEvent::Started);
    history.reset();
    EXPECT_EQ(outcome(), "exited");
    EXPECT_EQ(store.lines.size(), 2U);
}

TEST_F(RunHistories, LinesAreLostWithoutMemoryAndLaterOnesAreWritten) {
    ScheduledProject& entry = add("C:\\Sites\\a name that needs memory.kra");
    {
        const test::RefusedAllocations refused;
        history->onRunStarted(entry, true);
        finish(entry);
        history->record(ProgramEvent::Resumed);
    }
    EXPECT_THAT(store.lines, IsEmpty());
    EXPECT_EQ(causeOf(entry, true), "by hand");
}

TEST_F(RunHistories, CauseIsEmptyIfItsMemoryIsRefused) {
    ScheduledProject& entry = add("C:\\Sites\\news.kra");
    {
        const test::RefusedAllocations refused;
        history->onRunStarted(entry, true);
    }
    finish(entry);
    EXPECT_EQ(cell(4), "");
    EXPECT_EQ(outcome(), "ok");
}

TEST_F(RunHistories, RunsLeakNoMemory) {
    ScheduledProject& entry = add("C:\\Sites\\news.kra");
    const auto run = [&] {
        history->onRunStarted(entry, false);
        history->onProcessNotStarted(1, "a reason that is long enough to need memory of its own");
        finish(entry);
        store.lines = {};
    };
    run();
    const std::size_t before = test::heldBlocks();
    run();
    EXPECT_EQ(test::heldBlocks(), before);
}

} // namespace
} // namespace scheduler
