// What the commands of the real program do to the schedule.

#include "resources/ids.h"
#include "tests/program/commandsfixture.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

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
    EXPECT_EQ(list().cell(2, nextRunColumn), "waiting for b");
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 3U);
    EXPECT_EQ(saved[2].path, "d.kra");
    EXPECT_EQ(saved[2].afterIndex, 1);
}

TEST_F(Commands, RunNowStartsEverySelectedEntryAtOnceEvenDisabledAndWhileSuspended) {
    const driver::SampleSpider spider;
    std::vector<ScheduledProject> entries(3, sleeping(spider.makeProject("a.kra", spider.untilReleased())));
    entries[0].disabled = 1;
    startWith(entries);
    carryOut(IDM_SUSPEND);
    list().select({0, 1});
    carryOut(IDM_RUN);
    for (const std::string number : {"1", "2"})
        EXPECT_TRUE(waitUntil([&] { return spider.logged("start run " + number) == 1; }));
    EXPECT_EQ(spider.log().size(), 2U) << "the second waits for no one, the third was not selected";
    EXPECT_EQ(list().cell(1, nextRunColumn), "Running");
    spider.release();
    EXPECT_TRUE(waitUntil([&] { return list().cell(1, nextRunColumn) == "(suspended)"; }));
}

TEST_F(Commands, OpenStartsTheSpiderWithEverySelectedProject) {
    const driver::SampleSpider spider;
    const std::string first = spider.makeProject("a.kra");
    const std::string second = spider.makeProject("b.krb");
    startWith({sleeping(first), sleeping("run:cmd /c exit"), sleeping(second)});
    list().selectAll();
    carryOut(IDM_OPEN);
    EXPECT_TRUE(waitUntil([&] { return spider.log().size() == 2; }));
    for (const std::string& project : {first, second})
        EXPECT_EQ(spider.logged("open run -: \"" + spider.program() + "\" \"" + project + "\""), 1U);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
}

TEST_F(Commands, OpenNamesTheEditionThatIsMissing) {
    const driver::SampleSpider spider;
    const std::string project = spider.makeProject("a.kra");
    ASSERT_TRUE(DeleteFileA(spider.program().c_str()));
    startWith({sleeping(project)});
    list().select({0});
    scheduler_.command(IDM_OPEN);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::textOf(box), "Corvane Scheduler");
    EXPECT_EQ(GetWindow(box, GW_OWNER), window());
    EXPECT_EQ(SchedulerProcess::textOfBox(box), "Cannot find Corvane Delta!  Corvane Delta must be installed on this computer in order to open or run this project.");
    SchedulerProcess::press(box, IDOK);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
}

TEST_F(Commands, DroppedProjectsAreAddedAtTheEndWithDefaultSettings) {
    startWith({sleeping("a.kra")});
    witness().drop({"C:\\Sites\\one.kra", "C:\\Sites\\notes.txt", "C:\\Sites\\TWO.KRB", "C:\\Sites\\x.krab"});
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 3; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "one", "TWO"));
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 3U);
    ScheduledProject expected;
    expected.path = "C:\\Sites\\one.kra";
    expected.nextRun = base::TimeValue::never();
    EXPECT_TRUE(saved[1] == expected);
    EXPECT_EQ(saved[2].path, "C:\\Sites\\TWO.KRB");
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

TEST_F(Commands, TheEditorChangesItsEntryWhateverOtherProgramsDoMeanwhile) {
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
