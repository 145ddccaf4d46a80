// The program's main job: what falls due is started, what the spider leaves behind is recorded and saved.

#include "lib/base/processes.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/outcomes.h"
#include "scheduler/run/worker.h"
#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"
#include "tests/program/witnessdriver.h"

using base::TimeSpan;
using base::TimeValue;
using driver::after;
using driver::savedSchedule;
using driver::SchedulerProcess;
using driver::stateKey;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

class Runs : public driver::ProgramTest {
protected:
    /// An entry that is due once, a few seconds after runWith has started the scheduler.
    static ScheduledProject soon(const std::string& path) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::Once;
        return entry;
    }

    void runWith(std::vector<ScheduledProject> entries, const std::string& switches = "") {
        // On a busy machine the start itself may take longer than the time that was left.
        for (int seconds = 2; seconds < 100; seconds *= 2) {
            due_ = TimeValue::now() + TimeSpan::fromSeconds(seconds);
            for (ScheduledProject& entry : entries)
                if (entry.kind == ScheduleKind::Once)
                    entry.time = due_;
            driver::saveEntries(entries);
            ASSERT_TRUE(scheduler_.start(switches));
            if (TimeValue::now() < due_)
                return;
            scheduler_.kill();
        }
        FAIL() << "the scheduler does not start in time";
    }

    /// The entry as the file has it, once its run has been recorded there.
    static ScheduledProject recorded(std::size_t position) {
        ScheduledProject entry;
        const bool done = waitUntil([&] {
            const auto entries = savedSchedule();
            if (position >= entries.size())
                return false;
            entry = entries[position];
            return entry.lastRun != TimeValue() && !entry.running;
        });
        EXPECT_TRUE(done) << "entry " << position << " has not run";
        return entry;
    }

    driver::SampleSpider spider_;
    TimeValue due_; ///< when the entries of soon() are due
};

TEST_F(Runs, ADueProjectIsStartedWithItsCommandLineAndItsOutcomeIsSaved) {
    const std::string project =
        spider_.makeProject("news.kra", "seconds=1\nresult=3 pages are missing\nerror=0\n");
    ScheduledProject entry = soon(project);
    entry.dialupEntry = "Office line";
    entry.disconnectWhenDone = 1;
    entry.timeLimitMinutes = 30;
    runWith({entry});

    const ScheduledProject saved = recorded(0);
    EXPECT_EQ(saved.lastResult, "3 pages are missing");
    EXPECT_EQ(saved.nextRun, TimeValue::never());
    EXPECT_GE(saved.lastRun, due_);
    EXPECT_LE(saved.lastRun, due_ + TimeSpan::fromSeconds(5));
    EXPECT_EQ(spider_.logged("\"" + spider_.program() + "\" /s1 /r \"/aOffice line\" /d /t30 /e \"" +
                             project + "\""),
              1U);
    std::string left;
    EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", left));
}

TEST_F(Runs, AChainOfThreeRunsInItsOrder) {
    const std::string first = spider_.makeProject("first.kra", "ms=300\n");
    const std::string second = spider_.makeProject("second.krb", "ms=300\n");
    const std::string third = spider_.makeProject("third.krc", "ms=300\n");
    runWith({soon(first), after(0, second), after(1, third)});

    recorded(2);
    const auto log = spider_.log();
    ASSERT_EQ(log.size(), 6U);
    for (const auto& [line, name] : {std::pair{0, "first.kra"}, {2, "second.krb"}, {4, "third.krc"}}) {
        EXPECT_NE(log[static_cast<std::size_t>(line)].find("start"), std::string::npos);
        EXPECT_NE(log[static_cast<std::size_t>(line)].find(name), std::string::npos);
        EXPECT_NE(log[static_cast<std::size_t>(line) + 1].find("end"), std::string::npos);
    }
}

TEST_F(Runs, OfTwoThatAreDueTogetherTheSecondWaitsForTheFirst) {
    const std::string project = spider_.makeProject("slow.kra", "seconds=2\n");
    const std::string other = spider_.makeProject("quick.kra", "ms=100\n");
    runWith({soon(project), soon(other)});

    recorded(1);
    const auto log = spider_.log();
    ASSERT_EQ(log.size(), 4U);
    EXPECT_NE(log[1].find("end run 1"), std::string::npos);
    EXPECT_NE(log[2].find("quick.kra"), std::string::npos);
    EXPECT_EQ(recorded(0).lastResult, "");
    EXPECT_EQ(recorded(1).lastResult, "");
}

TEST_F(Runs, SideBySideWhenThePreferencesSaySo) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\RunMultiple", 1);
    const std::string project = spider_.makeProject("slow.kra", "seconds=5\n");
    runWith({soon(project), soon(project)});

    ASSERT_TRUE(waitUntil([&] { return spider_.log().size() >= 2; }));
    const auto log = spider_.log();
    // Which of two processes writes its line first is theirs.
    const std::string firstTwo = log[0] + log[1];
    EXPECT_NE(firstTwo.find("start run 1"), std::string::npos);
    EXPECT_NE(firstTwo.find("start run 2"), std::string::npos);
}

TEST_F(Runs, ACommandLineOfItsOwnRunsAsItStandsAndLeavesNoResult) {
    const std::string marker = spider_.folder() + "marker.txt";
    const std::string script = spider_.folder() + "mark.bat";
    driver::writeText(script, "@echo done> \"%~dp0marker.txt\"\r\n");
    runWith({soon("run:cmd /c \"" + script + "\"")});

    EXPECT_EQ(recorded(0).lastResult, "");
    EXPECT_TRUE(waitUntil([&] { return !driver::readLines(marker).empty(); }));
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, AFailedRunIsSavedWithTheTimeOfItsRetry) {
    const std::string project = spider_.makeProject("bad.kra", "ms=100\nresult=no connection\nerror=5\n");
    ScheduledProject entry = soon(project);
    entry.retryLimit = 2;
    entry.retryIntervalMinutes = 15;
    runWith({entry, after(0, project)});

    const ScheduledProject saved = recorded(0);
    EXPECT_EQ(saved.lastResult, "no connection");
    EXPECT_EQ(saved.retriesDone, 1U);
    const auto delay = secondsBetween(saved.nextRun, saved.lastRun);
    EXPECT_GE(delay, 15 * 60 + 5);
    EXPECT_LE(delay, 15 * 60 + 5 + 10);
    EXPECT_EQ(savedSchedule()[1].nextRun, TimeValue::never()) << "a run that is retried wakes nobody";
}

TEST_F(Runs, ASpiderThatLeavesNothingCountsAsAGoodRun) {
    ScheduledProject entry = soon(spider_.makeProject("silent.kra", "ms=100\nleave=nothing\n"));
    entry.retryLimit = 3;
    runWith({entry});
    const ScheduledProject saved = recorded(0);
    EXPECT_EQ(saved.lastResult, "");
    EXPECT_EQ(saved.retriesDone, 0U);
}

TEST_F(Runs, ANumberWhereTheResultsTextBelongsReadsAsNoText) {
    runWith({soon(spider_.makeProject("odd.kra", "ms=100\nresult-as-number=1\n"))});
    EXPECT_EQ(recorded(0).lastResult, "");
}

TEST_F(Runs, AProgramThatDoesNotExistEndsAtOnce) {
    runWith({soon("run:\"C:\\no such folder\\nothing.exe\" /x"),
             after(0, spider_.makeProject("next.kra", "ms=1\n"))});
    EXPECT_EQ(recorded(0).lastResult, "");
    recorded(1);
}

TEST_F(Runs, AFileTypeWithoutASpiderEndsAtOnce) {
    base::deleteKey(HKEY_CLASSES_ROOT, ".krc");
    runWith({soon(spider_.makeProject("orphan.krc", "ms=1\n"))});
    EXPECT_EQ(recorded(0).lastResult, "");
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, AProcessKilledFromOutsideEndsItsRun) {
    runWith({soon(spider_.makeProject("endless.kra", "seconds=600\n"))});
    ASSERT_TRUE(waitUntil([&] { return spider_.logged("start run 1") == 1; }));
    base::runProcessAndWait("taskkill /f /im spider.exe", SW_HIDE, "", INFINITE);
    EXPECT_EQ(recorded(0).lastResult, "");
}

TEST_F(Runs, ANoticeOfARunThatNobodyHasIsIgnored) {
    const std::string key = scheduler::outcomeKey(77);
    runWith({soon(spider_.makeProject("news.kra", "seconds=1\nresult=fine\n"))});
    ASSERT_TRUE(base::writeString(HKEY_LOCAL_MACHINE, key + "Result", "stray"));
    for (const WPARAM number : {WPARAM{0}, WPARAM{77}, WPARAM{0xFFFFFFFF}})
        PostMessageA(scheduler_.window(), scheduler::WM_RUN_FINISHED, number, 0);
    EXPECT_EQ(recorded(0).lastResult, "fine");
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, key + "Result"), "stray");
}

TEST_F(Runs, OutcomesOfEarlierRunsAreGoneAfterAStart) {
    ASSERT_TRUE(base::writeString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", "late"));
    runWith({});
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result"), "");
}

TEST_F(Runs, AnEntryAtStartupRunsAtTheFirstTickOfAStartAtLogOn) {
    ScheduledProject entry;
    entry.path = spider_.makeProject("startup.kra", "ms=100\n");
    entry.kind = ScheduleKind::AtStartup;
    entry.minutes = 30; // shown to the user, not waited for
    runWith({entry}, "/S");
    EXPECT_FALSE(IsWindowVisible(scheduler_.window()));
    recorded(0);
}

TEST_F(Runs, AnEntryAtStartupIsNeverDueInAStartByHand) {
    ScheduledProject entry;
    entry.path = spider_.makeProject("startup.kra", "ms=100\n");
    entry.kind = ScheduleKind::AtStartup;
    runWith({entry, soon(spider_.makeProject("other.kra", "ms=100\n"))});
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    recorded(1);
    EXPECT_EQ(spider_.logged("startup.kra"), 0U);
    EXPECT_EQ(savedSchedule()[0].nextRun, TimeValue::never());
}

TEST_F(Runs, NothingIsStartedWhileSuspendedAndMissedOccasionsAreSkipped) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 2);
    const ScheduledProject entry = soon(spider_.makeProject("news.kra", "ms=100\n"));
    runWith({entry});
    EXPECT_EQ(driver::textOf(scheduler_.window()), "Corvane Scheduler (suspended)");
    ASSERT_TRUE(waitUntil([&] { return TimeValue::now() > due_ + TimeSpan::fromSeconds(3); }));
    scheduler_.command(IDM_SUSPEND);
    EXPECT_TRUE(waitUntil([&] { return driver::textOf(scheduler_.window()) == "Corvane Scheduler"; }));
    EXPECT_TRUE(
        waitUntil([&] { return base::getNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 9) == 0; }));
    const driver::WitnessDriver witness(scheduler_.window(), scheduler_.window());
    ASSERT_TRUE(witness.isThere() && witness.passTicks(3));
    // A spider may not have come to its log yet, or be gone again: the program knows what it has started.
    EXPECT_NE(driver::ListDriver(scheduler_.window()).cell(0, driver::nextRunColumn), "Running");
    EXPECT_EQ(witness.endedRuns(), 0);
    EXPECT_EQ(savedSchedule()[0].lastRun, TimeValue());
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, TheTestCommandMarksWhatIsDueAsRunningAndStartsNothing) {
    const ScheduledProject entry = soon(spider_.makeProject("news.kra", "ms=100\n"));
    runWith({entry});
    scheduler_.command(IDM_SUSPEND);
    ASSERT_TRUE(waitUntil([&] { return TimeValue::now() > due_; }));
    scheduler_.command(IDM_TEST);
    scheduler_.command(IDM_EXIT);
    ASSERT_TRUE(waitUntil([&] { return scheduler_.messageBox() != nullptr; })) << "its next run stands";
    SchedulerProcess::press(scheduler_.messageBox(), IDYES);
    ASSERT_TRUE(scheduler_.waitForExit());
    ASSERT_EQ(savedSchedule().size(), 1U);
    EXPECT_EQ(savedSchedule()[0].running, 1);
    EXPECT_EQ(savedSchedule()[0].runNumber, 1);
    EXPECT_TRUE(spider_.log().empty());

    // The next start clears it.
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    ASSERT_TRUE(scheduler_.waitForExit()) << "its occasion has passed: nothing to ask";
    EXPECT_EQ(savedSchedule()[0].running, 0);
}

TEST_F(Runs, AScheduleThatCannotBeSavedDoesNotStopTheRuns) {
    const std::string project = spider_.makeProject("news.kra", "ms=100\n");
    runWith({soon(project), after(0, project)});
    SetFileAttributesA(scheduler::schedulePath().c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_TRUE(waitUntil([&] { return spider_.logged("end run 1") == 2; }));
    SetFileAttributesA(scheduler::schedulePath().c_str(), FILE_ATTRIBUTE_NORMAL);
}

} // namespace
