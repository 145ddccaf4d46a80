#include "resources/ids.h"
#include "scheduler/run/outcomes.h"
#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"

using base::TimeSpan;
using base::TimeValue;
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

    void runWith(const ScheduledProject& entry) {
        ASSERT_NO_FATAL_FAILURE(startWith({entry}));
        clock_.moveTo(due_);
        scheduler_.tick();
    }

    ScheduledProject recorded() const {
        ScheduledProject entry;
        EXPECT_TRUE(waitUntil([&] {
            scheduler_.tick();
            entry = savedEntry();
            return entry.lastRun != TimeValue() && !entry.running;
        }));
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
    // The program's own timer starts the run while the window is hidden.
    ASSERT_TRUE(waitUntil([] { return savedEntry().lastResult == "3 pages are missing"; }));

    EXPECT_FALSE(IsWindowVisible(window()));
    const ScheduledProject saved = recorded();
    EXPECT_EQ(saved.nextRun, TimeValue::never());
    EXPECT_GE(saved.lastRun, due_);
    EXPECT_LE(saved.lastRun, TimeValue::now());
    EXPECT_EQ(spider_.logged("start run 1: \"" + spider_.program() +
                             "\" /s1 /r \"/aOffice line\" /d /t30 /e \"" + project + "\""),
              1U);
    std::string left;
    EXPECT_FALSE(base::readString(HKEY_LOCAL_MACHINE, scheduler::outcomeKey(1) + "Result", left));
}

TEST_F(Runs, ACommandLineRunsUnchangedAndLeavesNoResult) {
    const std::string script = spider_.folder() + "mark.bat";
    driver::writeText(script, "@echo done> \"%~dp0marker.txt\"\r\n");
    runWith(once("run:cmd /c \"" + script + "\""));
    EXPECT_EQ(recorded().lastResult, "");
    EXPECT_FALSE(driver::readLines(spider_.folder() + "marker.txt").empty());
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, EntriesDueWhileSuspendedAreSkipped) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 2);
    runWith(once(spider_.makeProject("news.kra")));
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler (suspended)");
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
    scheduler_.tick();
    EXPECT_EQ(base::getNumber(HKEY_CURRENT_USER, stateKey + "\\Suspended", 9), 0U);
    EXPECT_EQ(list().cell(0, driver::nextRunColumn), "(never)");
    EXPECT_EQ(savedEntry().lastRun, TimeValue());
    EXPECT_TRUE(spider_.log().empty());
}

TEST_F(Runs, AnEditKeepsTheRecordOfARunDuringTheEdit) {
    ScheduledProject entry = once(spider_.makeProject("due.kra", spider_.untilReleased()));
    entry.lastResult = "2 errors";
    startWith({entry});
    list().select({0});
    driver::EditorDriver editor(scheduler_);
    ASSERT_TRUE(editor.openEdit());
    clock_.moveTo(due_);
    ASSERT_TRUE(waitUntil([&] { return list().cell(0, driver::nextRunColumn) == "Running"; }));
    spider_.release();
    ASSERT_TRUE(waitUntil([&] { return list().cell(0, driver::lastRunColumn) != "Never"; }));
    EXPECT_TRUE(editor.isOpen());
    EXPECT_FALSE(IsWindowEnabled(window()));
    ASSERT_TRUE(editor.replace(IDC_TIME_LIMIT, "7"));
    const auto saved = editor.saveByOk();
    ASSERT_EQ(saved.size(), 1U);
    const ScheduledProject& edited = saved[0];
    EXPECT_EQ(edited.timeLimitMinutes, 7);
    EXPECT_EQ(edited.running, 0);
    EXPECT_GE(edited.lastRun, due_);
    EXPECT_EQ(edited.lastResult, "") << "the result of the new run";
}

} // namespace
