// Leaving: the exit question, the end of the log-on, and the automatic start that is written then.

#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"

using base::TimeSpan;
using base::TimeValue;
using driver::autostartValue;
using driver::pendingEntry;
using driver::SchedulerProcess;
using driver::waitUntil;
using scheduler::ScheduledProject;

namespace {

class Exit : public driver::ProgramTest {};

TEST_F(Exit, NoToTheExitQuestionLeavesEverythingAsItWas) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::textOf(box), "Corvane Scheduler");
    EXPECT_EQ(SchedulerProcess::textOfBox(box),
              "The Scheduler will not be able to launch projects if you exit.  You can choose \"Close\" to "
              "hide the main window and still leave the program active.  Are you sure you want to exit?");
    SchedulerProcess::press(box, IDNO);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    EXPECT_TRUE(scheduler_.isRunning());
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, autostartValue), "");
}

TEST_F(Exit, YesToTheExitQuestionEndsTheProgram) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    SchedulerProcess::press(box, IDYES);
    EXPECT_TRUE(scheduler_.waitForExit());
    EXPECT_EQ(scheduler_.exitCode(), 0U);
}

TEST_F(Exit, ASecondRequestWhileTheQuestionStandsAsksNoSecondOne) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    SchedulerProcess::press(box, IDNO);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    EXPECT_TRUE(scheduler_.isRunning());
}

TEST_F(Exit, ExitAsksNothingWhenEveryEntryIsDisabledOrNeverDue) {
    ScheduledProject disabled = pendingEntry();
    disabled.disabled = 1;
    ScheduledProject past = pendingEntry();
    past.time = TimeValue::now() - TimeSpan::fromDays(1);
    driver::saveEntries({disabled, past});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    EXPECT_TRUE(scheduler_.waitForExit());
}

TEST_F(Exit, EndOfTheLogOnAsksTheSameQuestion) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(SendMessageA(scheduler_.window(), WM_QUERYENDSESSION, 0, 0), 1);
    SendMessageA(scheduler_.window(), WM_ENDSESSION, FALSE, 0);
    EXPECT_TRUE(scheduler_.isRunning());
    PostMessageA(scheduler_.window(), WM_ENDSESSION, TRUE, 0);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    SchedulerProcess::press(box, IDYES);
    EXPECT_TRUE(scheduler_.waitForExit());
}

TEST_F(Exit, NoAtTheEndOfTheLogOnLeavesEverythingAsItWas) {
    driver::saveEntries({pendingEntry()});
    base::writeString(HKEY_LOCAL_MACHINE, autostartValue, "old");
    ASSERT_TRUE(scheduler_.start());
    PostMessageA(scheduler_.window(), WM_ENDSESSION, TRUE, 0);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    SchedulerProcess::press(box, IDNO);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, autostartValue), "old");
    EXPECT_EQ(driver::savedSchedule().size(), 1U);
    // Its timer and its commands work on.
    scheduler_.command(IDM_EXIT);
    const HWND asked = waitForBox();
    ASSERT_NE(asked, nullptr);
    SchedulerProcess::press(asked, IDYES);
    EXPECT_TRUE(scheduler_.waitForExit());
}

TEST_F(Exit, TheScheduleIsSavedBeforeTheEndOfTheLogOnIsAskedAbout) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    PostMessageA(scheduler_.window(), WM_ENDSESSION, TRUE, 0);
    ASSERT_NE(waitForBox(), nullptr);
    EXPECT_EQ(driver::savedSchedule().size(), 1U) << "nobody may have the time to answer";
}

TEST_F(Exit, TheScheduleIsSavedWhenTheLogOnEndsWhileTheQuestionStands) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    SetWindowPos(scheduler_.window(), nullptr, 40, 60, 500, 300, SWP_NOZORDER);
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(driver::savedSchedule().empty()) << "asking alone saves nothing";
    EXPECT_EQ(SendMessageA(scheduler_.window(), WM_QUERYENDSESSION, 0, 0), 1);
    EXPECT_EQ(SendMessageA(scheduler_.window(), WM_ENDSESSION, TRUE, 0), 0);
    EXPECT_EQ(scheduler_.messageBox(), box) << "it is the same question, and still open";
    EXPECT_EQ(driver::savedSchedule().size(), 1U);
    // The platform ends the process now.
    scheduler_.kill();
    ASSERT_TRUE(scheduler_.start());
    RECT place{};
    GetWindowRect(scheduler_.window(), &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.right - place.left, 500);
}

TEST_F(Exit, ExitWritesTheAutostartValueWhenThePreferencesSaySo) {
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, autostartValue), "") << "only exit touches it";
    ASSERT_NO_FATAL_FAILURE(close());
    const std::string value = base::getString(HKEY_LOCAL_MACHINE, autostartValue);
    EXPECT_EQ(value, "\"" + driver::buildFolder() + "scheduler.exe\" /s");
}

TEST_F(Exit, ExitDeletesTheAutostartValueWhenThePreferencesSaySo) {
    base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Autostart", 0);
    base::writeString(HKEY_LOCAL_MACHINE, autostartValue, "old");
    ASSERT_TRUE(scheduler_.start());
    ASSERT_NO_FATAL_FAILURE(close());
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, autostartValue), "");
}

TEST_F(Exit, AKilledProgramLeavesTheAutostartValueAsItWas) {
    base::writeString(HKEY_LOCAL_MACHINE, autostartValue, "old");
    ASSERT_TRUE(scheduler_.start());
    scheduler_.kill();
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, autostartValue), "old");
}

} // namespace
