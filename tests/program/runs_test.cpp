// The program's main job: what falls due is started, and what the spider leaves is recorded and saved.

#include "resources/ids.h"
#include "scheduler/run/outcomes.h"
#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"

using base::TimeSpan;
using base::TimeValue;
using driver::after;
using driver::nextRunColumn;
using driver::savedSchedule;
using driver::sleeping;
using driver::stateKey;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

class Runs : public driver::ProgramTest {
protected:
    ScheduledProject once(const std::string& path) const {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::Once;
        entry.time = due_;
        return entry;
    }

    /// Starts the program on these entries, and sets the clock to the time of those that run once.
    void runWith(const std::vector<ScheduledProject>& entries, const std::string& switches = "") {
        ASSERT_NO_FATAL_FAILURE(startWith(entries, switches));
        clock_.moveTo(due_);
        scheduler_.tick();
    }

    /// The entry as the file has it after its run.
    ScheduledProject recorded(std::size_t position) const {
        ScheduledProject entry;
        EXPECT_TRUE(waitUntil([&] {
            scheduler_.tick();
            const auto entries = savedSchedule();
            if (position < entries.size())
                entry = entries[position];
            return entry.lastRun != TimeValue() && !entry.running;
        })) << "entry "
            << position << " has not run";
        return entry;
    }

    driver::SettableClock clock_;
    driver::SampleSpider spider_;
    const TimeValue due_ = TimeValue::now() + TimeSpan::fromMinutes(60);
};

TEST_F(Runs, ADueProjectIsStartedWithItsCommandLineAndItsOutcomeIsSaved) {
    const std::string project = spider_.makeProject("news.kra", "result=3 pages are missing\n");
    ScheduledProject entry = once(project);
    entry.dialupEntry = "Office line";
    entry.disconnectWhenDone = 1;
    entry.timeLimitMinutes = 30;
    ASSERT_NO_FATAL_FAILURE(startWith({entry}));
    SendMessageA(window(), WM_CLOSE, 0, 0);
    clock_.moveTo(due_);
    // Its own timer starts it, while its window is hidden.
    ASSERT_TRUE(waitUntil([] { return savedEntry().lastResult == "3 pages are missing"; }));

    EXPECT_FALSE(IsWindowVisible(window()));
    const ScheduledProject saved = recorded(0);
    EXPECT_EQ(saved.nextRun, TimeValue::never());
    EXPECT_GE(saved.lastRun, due_);
    EXPECT_LE(saved.lastRun, TimeValue::now());
    EXPECT_EQ(spider_.logged("start run 1: \"" + spider_.program() +
                             "\" /s1 /r \"/aOffice line\" /d /t30 /e \"" + project + "\""),
              1U);
    std::string left;
    EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", left));
}

TEST_F(Runs, AChainOfThreeRunsInItsOrder) {
    runWith({once(spider_.makeProject("first.kra")), after(0, spider_.makeProject("second.krb")),
             after(1, spider_.makeProject("third.krc"))});
    recorded(2);
    const auto log = spider_.log();
    ASSERT_EQ(log.size(), 6U);
    for (const auto& [line, name] : {std::pair{0U, "first.kra"}, {2U, "second.krb"}, {4U, "third.krc"}}) {
        EXPECT_NE(log[line].find("start"), std::string::npos);
        EXPECT_NE(log[line].find(name), std::string::npos);
        EXPECT_NE(log[line + 1].find("end"), std::string::npos);
    }
}

TEST_F(Runs, OfTwoThatAreDueTogetherTheSecondWaitsForTheFirst) {
    runWith({once(spider_.makeProject("slow.kra", spider_.untilReleased())),
             once(spider_.makeProject("quick.kra"))});
    scheduler_.tick();
    EXPECT_EQ(list().cell(0, nextRunColumn), "Running");
    EXPECT_NE(list().cell(1, nextRunColumn), "Running");
    spider_.release();
    recorded(1);
    const auto log = spider_.log();
    ASSERT_EQ(log.size(), 4U);
    EXPECT_NE(log[1].find("end run 1"), std::string::npos);
    EXPECT_NE(log[2].find("quick.kra"), std::string::npos);
}

TEST_F(Runs, TwoThatAreDueTogetherRunSideBySideWhenThePreferencesSaySo) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\RunMultiple", 1);
    const std::string project = spider_.makeProject("slow.kra", spider_.untilReleased());
    runWith({once(project), once(project)});
    EXPECT_TRUE(waitUntil([&] { return spider_.logged("start run 1") == 1; }));
    EXPECT_TRUE(waitUntil([&] { return spider_.logged("start run 2") == 1; }));
    EXPECT_EQ(spider_.logged("end"), 0U);
}

TEST_F(Runs, ACommandLineRunsAsItStandsAndLeavesNoResult) {
    const std::string script = spider_.folder() + "mark.bat";
    driver::writeText(script, "@echo done> \"%~dp0marker.txt\"\r\n");
    runWith({once("run:cmd /c \"" + script + "\"")});
    EXPECT_EQ(recorded(0).lastResult, "");
    EXPECT_FALSE(driver::readLines(spider_.folder() + "marker.txt").empty());
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, AFailedRunIsSavedWithTheTimeOfItsRetryAndWakesNoFollower) {
    const std::string project = spider_.makeProject("bad.kra", "result=no connection\nerror=5\n");
    ScheduledProject entry = once(project);
    entry.retryLimit = 2;
    entry.retryIntervalMinutes = 15;
    runWith({entry, after(0, project)});
    const ScheduledProject saved = recorded(0);
    EXPECT_EQ(saved.lastResult, "no connection");
    EXPECT_EQ(saved.retriesDone, 1U);
    const TimeSpan delay = TimeSpan::fromSeconds(15 * 60 + 5);
    EXPECT_GE(saved.nextRun, saved.lastRun + delay);
    EXPECT_LE(saved.nextRun, TimeValue::now() + delay);
    EXPECT_EQ(savedSchedule()[1].nextRun, TimeValue::never());
}

TEST_F(Runs, OutcomesOfEarlierRunsAreGoneAfterAStart) {
    const std::string result = scheduler::outcomeKey(1) + "Result";
    ASSERT_TRUE(base::writeString(HKEY_LOCAL_MACHINE, result, "late"));
    startWith({});
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, result), "");
}

TEST_F(Runs, AnEntryAtStartupRunsAfterAStartAtLogOnOnly) {
    ScheduledProject atStartup = sleeping(spider_.makeProject("startup.kra"));
    atStartup.minutes = 30; // ignored
    for (const bool atLogOn : {false, true}) {
        runWith({atStartup, once(spider_.makeProject("other.kra"))}, atLogOn ? "/S" : "");
        EXPECT_EQ(IsWindowVisible(window()) != FALSE, !atLogOn);
        recorded(1);
        EXPECT_EQ(spider_.logged("startup.kra"), atLogOn ? 1U : 0U);
        clock_.moveBy(-60 * 60);
    }
}

TEST_F(Runs, WhatFallsDueWhileSuspendedIsSkipped) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 2);
    runWith({once(spider_.makeProject("news.kra"))});
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler (suspended)");
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
    scheduler_.tick();
    EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 9), 0U);
    EXPECT_EQ(list().cell(0, nextRunColumn), "(never)");
    EXPECT_EQ(savedEntry().lastRun, TimeValue());
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, TheTestCommandMarksWhatIsDueAsRunningUntilTheNextStart) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 1);
    runWith({once(spider_.makeProject("news.kra"))});
    EXPECT_EQ(list().cell(0, nextRunColumn), "(suspended)");
    carryOut(IDM_TEST);
    EXPECT_EQ(list().cell(0, nextRunColumn), "Running");
    ASSERT_TRUE(scheduler_.exit());
    EXPECT_EQ(savedEntry().running, 1);
    EXPECT_EQ(savedEntry().runNumber, 1);
    EXPECT_TRUE(spider_.log().empty());

    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    ASSERT_TRUE(scheduler_.waitForExit()) << "the run is missed, so nothing is asked";
    EXPECT_EQ(savedEntry().running, 0);
}

} // namespace
