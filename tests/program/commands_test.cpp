// What the commands of the real program do to the schedule.

#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/edition.h"
#include "tests/program/commandsfixture.h"
#include "tests/program/scheduledriver.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using base::TimeSpan;
using base::TimeValue;
using driver::after;
using driver::Commands;
using driver::nextRunColumn;
using driver::savedSchedule;
using driver::SchedulerProcess;
using driver::sleeping;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::ElementsAre;

namespace {

TEST_F(Commands, DeletingInTheMiddleOfAChainTiesItsEndsTogether) {
    startWith({sleeping("a.kra"), sleeping("b.kra"), after(1, "c.kra"), after(2, "d.kra")});
    list().select({2});
    carryOut(IDM_DELETE);
    EXPECT_EQ(scheduler_.messageBox(), nullptr) << "nothing is asked";
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "b", "d"));
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 3U);
    EXPECT_EQ(saved[2].path, "d.kra");
    EXPECT_EQ(saved[2].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(saved[2].afterIndex, 1);
    EXPECT_EQ(list().cell(2, nextRunColumn), "waiting for b");
}

TEST_F(Commands, AFollowerOfTheDeletedFirstEntryRunsAtStartup) {
    startWith({sleeping("a.kra"), after(0, "b.kra"), after(0, "c.kra")});
    list().select({0});
    carryOut(IDM_DELETE);
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[0].kind, ScheduleKind::AtStartup) << "it would follow itself";
    EXPECT_EQ(saved[1].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(saved[1].afterIndex, 0);
}

TEST_F(Commands, WithoutASelectionNothingIsDone) {
    const std::vector<ScheduledProject> entries = {sleeping("a.kra")};
    startWith(entries);
    for (const int command : {IDM_DELETE, IDM_RUN, IDM_ENABLE, IDM_OPEN})
        carryOut(command);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
    EXPECT_EQ(list().cell(0, nextRunColumn), "next startup");
    EXPECT_EQ(savedSchedule().size(), 1U);
}

TEST_F(Commands, AnEntryCanBeDeletedWhileItRuns) {
    const driver::SampleSpider spider;
    startWith({sleeping(spider.makeProject("news.kra", "seconds=2\n")), sleeping("b.kra")});
    list().select({0});
    carryOut(IDM_RUN);
    ASSERT_TRUE(waitUntil([&] { return spider.logged("start run 1") == 1; }));
    carryOut(IDM_DELETE);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("b"));
    EXPECT_EQ(witness().endedRuns(), 0);
    ASSERT_TRUE(waitUntil([&] { return witness().endedRuns() == 1; }));
    ASSERT_TRUE(witness().passTicks(2));
    EXPECT_EQ(spider.logged("end run 1"), 1U);
    EXPECT_TRUE(scheduler_.isRunning());
    EXPECT_EQ(list().cell(0, driver::lastRunColumn), "Never");
}

TEST_F(Commands, TogglingAMixedSelectionLeavesItMixed) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra"), sleeping("c.kra")};
    entries[1].disabled = 1;
    startWith(entries);
    list().select({0, 1});
    carryOut(IDM_ENABLE);
    EXPECT_THAT(list().columnTexts(nextRunColumn), ElementsAre("(disabled)", "next startup", "next startup"));
    EXPECT_THAT(list().selectedRows(), ElementsAre(0, 1));
    const auto saved = savedSchedule();
    EXPECT_EQ(saved[0].disabled, 1);
    EXPECT_EQ(saved[1].disabled, 0);
    EXPECT_EQ(saved[2].disabled, 0);
}

TEST_F(Commands, EnablingComputesTheNextRunAnew) {
    ScheduledProject entry = sleeping("a.kra");
    entry.kind = ScheduleKind::Once;
    entry.time = TimeValue::now() + TimeSpan::fromDays(1);
    entry.disabled = 1;
    startWith({entry});
    list().select({0});
    carryOut(IDM_ENABLE);
    EXPECT_EQ(savedSchedule()[0].nextRun, entry.time);
    EXPECT_EQ(list().cell(0, nextRunColumn).find("tomorrow at "), 0U);
}

TEST_F(Commands, RunNowRunsEverySelectedEntryAtOnce) {
    const driver::SampleSpider spider;
    startWith({sleeping(spider.makeProject("a.kra", "seconds=2\n")),
               sleeping(spider.makeProject("b.kra", "seconds=2\n")),
               sleeping(spider.makeProject("c.kra", "ms=1\n"))});
    list().select({0, 1});
    carryOut(IDM_RUN);
    EXPECT_TRUE(waitUntil([&] { return spider.logged("end run") == 2; }));
    EXPECT_EQ(spider.logged("start run 1"), 1U);
    EXPECT_EQ(spider.logged("start run 2"), 1U) << "what the user starts waits for nobody";
    EXPECT_EQ(spider.logged("c.kra"), 0U);
}

TEST_F(Commands, RunNowRunsADisabledEntryAndWhileSuspended) {
    const driver::SampleSpider spider;
    ScheduledProject entry = sleeping(spider.makeProject("a.kra", "ms=100\n"));
    entry.disabled = 1;
    startWith({entry});
    carryOut(IDM_SUSPEND);
    list().select({0});
    carryOut(IDM_RUN);
    EXPECT_TRUE(waitUntil([&] { return spider.logged("end run 1") == 1; }));
}

TEST_F(Commands, OpenStartsTheSpiderWithEverySelectedProject) {
    const driver::SampleSpider spider;
    const std::string first = spider.makeProject("a.kra", "");
    const std::string second = spider.makeProject("b.krb", "");
    startWith({sleeping(first), sleeping("run:cmd /c exit"), sleeping(second)});
    list().select({0, 1, 2});
    carryOut(IDM_OPEN);
    EXPECT_TRUE(waitUntil([&] { return spider.log().size() == 2; }));
    EXPECT_EQ(spider.logged("open run -: \"" + spider.program() + "\" \"" + first + "\""), 1U);
    EXPECT_EQ(spider.logged("open run -: \"" + spider.program() + "\" \"" + second + "\""), 1U);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
}

TEST_F(Commands, OpenSaysWhichSpiderIsMissing) {
    const driver::SampleSpider spider;
    const std::string project = spider.makeProject("a.kra", "");
    ASSERT_TRUE(DeleteFileA(spider.program().c_str()));
    startWith({sleeping(project)});
    list().select({0});
    scheduler_.command(IDM_OPEN);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::textOf(box), "Corvane Scheduler");
    EXPECT_EQ(GetWindow(box, GW_OWNER), window());
    const std::string edition = scheduler::editionName(project);
    EXPECT_FALSE(edition.empty());
    EXPECT_EQ(SchedulerProcess::textOfBox(box),
              "Cannot find " + edition + "!  " + edition +
                  " must be installed on this computer in order to open or run "
                  "this project.");
    SchedulerProcess::press(box, IDOK);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
}

TEST_F(Commands, DroppedProjectsAreAddedAtTheEndWithDefaultSettings) {
    startWith({sleeping("a.kra")});
    witness().drop({"C:\\Sites\\one.kra", "C:\\Sites\\notes.txt", "C:\\Sites\\TWO.KRB", "C:\\Sites\\x.krab",
                    "C:\\Sites\\three.krc", "C:\\Sites\\kra", "C:\\Sites\\y.krd"});
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 4; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "one", "TWO", "three"));
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 4U);
    ScheduledProject expected;
    expected.path = "C:\\Sites\\one.kra";
    expected.nextRun = TimeValue::never();
    EXPECT_TRUE(saved[1] == expected);
    EXPECT_EQ(saved[2].path, "C:\\Sites\\TWO.KRB");
    EXPECT_EQ(saved[3].path, "C:\\Sites\\three.krc");
}

TEST_F(Commands, OtherDroppedFilesChangeNothing) {
    startWith({sleeping("a.kra")});
    const std::string before = driver::readBytes(scheduler::schedulePath());
    witness().drop({"C:\\Sites\\notes.txt", "C:\\Sites\\a.kr", "C:\\Sites\\a.kra.bak"});
    witness().drop({});
    ASSERT_TRUE(witness().passTicks(2));
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
    EXPECT_EQ(driver::readBytes(scheduler::schedulePath()), before);
}

TEST_F(Commands, DroppedFilesComeLastAlsoInASortedList) {
    startWith({sleeping("b.kra"), sleeping("a.kra")});
    list().clickHeader(0);
    witness().drop({"C:\\aa.kra"});
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 3; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "b", "aa"));
}

TEST_F(Commands, SuspendAndResumeShowInTheTitle) {
    startWith({sleeping("a.kra")});
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler (suspended)");
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
}

TEST_F(Commands, TheTestCommandShowsWhatWouldRun) {
    ScheduledProject entry = sleeping("C:\\Sites\\a.kra");
    entry.kind = ScheduleKind::Once;
    entry.time = TimeValue::now() + TimeSpan::fromSeconds(3);
    startWith({entry});
    carryOut(IDM_SUSPEND);
    ASSERT_TRUE(waitUntil([&] { return TimeValue::now() > entry.time; }));
    EXPECT_EQ(list().cell(0, nextRunColumn), "(suspended)");
    carryOut(IDM_TEST);
    EXPECT_EQ(list().cell(0, nextRunColumn), "Running");
}

TEST_F(Commands, WhatACommandOpensMakesTheWindowWaitEvenWhileNoWindowIsActive) {
    startWith({sleeping("a.kra")}, "/s");
    list().select({0});
    for (const int command : {IDM_ADD, IDM_EDIT, IDM_PREFERENCES, IDM_ABOUT}) {
        scheduler_.command(command);
        const HWND dialog = waitForBox();
        ASSERT_NE(dialog, nullptr) << command;
        EXPECT_FALSE(IsWindowEnabled(window())) << command;
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), window()) << command;
        PostMessageA(dialog, WM_CLOSE, 0, 0);
        EXPECT_TRUE(waitUntil([&] { return !IsWindow(dialog) && IsWindowEnabled(window()); })) << command;
    }
}

TEST_F(Commands, WhileTheEditorIsOpenOtherProgramsChangeNothing) {
    startWith({sleeping("run:a"), sleeping("run:b"), after(0, "run:c")});
    list().select({2});
    scheduler_.command(IDM_EDIT);
    const HWND sheet = waitForBox();
    ASSERT_NE(sheet, nullptr);
    list().select({0});
    for (const int command : {IDM_ADD, IDM_EDIT, IDM_DELETE, IDM_RUN, IDM_ENABLE})
        carryOut(command);
    SchedulerProcess::press(sheet, IDOK);
    ASSERT_TRUE(waitUntil([&] { return !IsWindow(sheet) && IsWindowEnabled(window()); }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("run:a", "run:b", "run:c"));
    EXPECT_EQ(list().cell(2, nextRunColumn), "waiting for run:a");
    EXPECT_FALSE(savedSchedule().front().disabled);
}

} // namespace
