// Starting once, hiding, being told to close, and what is left behind at exit.

#include "lib/base/registry.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/outcomes.h"
#include "tests/program/scheduledriver.h"

#include <gtest/gtest.h>

using base::TimeSpan;
using base::TimeValue;
using driver::SchedulerProcess;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

const std::string runValue = "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\Corvane Scheduler";
const std::string stateKey = "Software\\Brindlewood\\scheduler\\State";

class Lifecycle : public ::testing::Test {
protected:
    void SetUp() override {
        driver::saveEntries({});
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood\\scheduler");
        base::deleteValue(HKEY_LOCAL_MACHINE, runValue);
    }
    void TearDown() override { scheduler_.kill(); }

    /// An enabled entry that is due tomorrow: something to lose by leaving.
    static ScheduledProject pendingEntry() {
        ScheduledProject entry;
        entry.path = "C:\\Sites\\news.kra";
        entry.kind = ScheduleKind::Once;
        entry.time = TimeValue::now() + TimeSpan::fromDays(1);
        return entry;
    }

    HWND waitForBox() {
        waitUntil([&] { return scheduler_.messageBox() != nullptr; });
        return scheduler_.messageBox();
    }

    SchedulerProcess scheduler_;
};

TEST_F(Lifecycle, CloseEndsTheRunningCopy) {
    for (const std::string word : {"/close", "/CLOSE", "/closeall"}) {
        ASSERT_TRUE(scheduler_.start());
        EXPECT_EQ(SchedulerProcess::runToEnd(word), 0U);
        EXPECT_TRUE(scheduler_.waitForExit()) << word;
        EXPECT_EQ(scheduler_.exitCode(), 0U);
    }
}

TEST_F(Lifecycle, CloseWithoutARunningCopyDoesNothing) {
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    EXPECT_EQ(FindWindowA(nullptr, "Corvane Scheduler"), nullptr);
}

TEST_F(Lifecycle, AStartByHandShowsTheWindowAndAStartAtLogOnHidesIt) {
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(driver::textOf(scheduler_.window()), "Corvane Scheduler");
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    scheduler_.kill();
    for (const std::string word : {"/s", "/S", " /s", "/start"}) {
        ASSERT_TRUE(scheduler_.start(word));
        EXPECT_FALSE(IsWindowVisible(scheduler_.window())) << word;
        scheduler_.kill();
    }
}

TEST_F(Lifecycle, ASecondStartShowsTheHiddenFirstCopy) {
    ASSERT_TRUE(scheduler_.start("/s"));
    EXPECT_EQ(SchedulerProcess::runToEnd(""), 0U);
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    EXPECT_TRUE(scheduler_.isRunning());
}

TEST_F(Lifecycle, ASecondStartFindsNoWindowWhileTheFirstCopyIsSuspended) {
    ASSERT_TRUE(scheduler_.start("/s"));
    scheduler_.command(IDM_SUSPEND);
    ASSERT_TRUE(
        waitUntil([&] { return driver::textOf(scheduler_.window()) == "Corvane Scheduler (suspended)"; }));
    EXPECT_EQ(SchedulerProcess::runToEnd(""), 0U);
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    EXPECT_FALSE(IsWindowVisible(scheduler_.window()));
    EXPECT_TRUE(scheduler_.isRunning());
}

TEST_F(Lifecycle, ClosingTheWindowOnlyHidesIt) {
    ASSERT_TRUE(scheduler_.start());
    for (const bool byMenu : {false, true}) {
        SendMessageA(scheduler_.window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDBLCLK);
        EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
        if (byMenu)
            SendMessageA(scheduler_.window(), WM_COMMAND, IDM_CLOSE, 0);
        else
            SendMessageA(scheduler_.window(), WM_CLOSE, 0, 0);
        EXPECT_FALSE(IsWindowVisible(scheduler_.window()));
        EXPECT_TRUE(scheduler_.isRunning());
    }
}

TEST_F(Lifecycle, ASingleClickOnTheIconLeavesAHiddenWindowHidden) {
    ASSERT_TRUE(scheduler_.start("/s"));
    SendMessageA(scheduler_.window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDOWN);
    EXPECT_FALSE(IsWindowVisible(scheduler_.window()));
    SendMessageA(scheduler_.window(), WM_COMMAND, IDM_DISPLAY, 0);
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
}

TEST_F(Lifecycle, NoToTheExitQuestionLeavesEverythingAsItWas) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::textOf(box), "Corvane Scheduler");
    EXPECT_EQ(SchedulerProcess::textOfBox(box),
              "The Scheduler will not be able to launch projects if you exit.  You can choose \"Close\" to "
              "hide the "
              "main window and still leave the program active.  Are you sure you want to exit?");
    SchedulerProcess::press(box, IDNO);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    EXPECT_TRUE(scheduler_.isRunning());
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, runValue), "");
}

TEST_F(Lifecycle, YesToTheExitQuestionEndsTheProgram) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    SchedulerProcess::press(box, IDYES);
    EXPECT_TRUE(scheduler_.waitForExit());
    EXPECT_EQ(scheduler_.exitCode(), 0U);
}

TEST_F(Lifecycle, ASecondRequestWhileTheQuestionStandsAsksNoSecondOne) {
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

TEST_F(Lifecycle, ExitAsksNothingWhenEveryEntryIsDisabledOrNeverDue) {
    ScheduledProject disabled = pendingEntry();
    disabled.disabled = 1;
    ScheduledProject past = pendingEntry();
    past.time = TimeValue::now() - TimeSpan::fromDays(1);
    driver::saveEntries({disabled, past});
    ASSERT_TRUE(scheduler_.start());
    scheduler_.command(IDM_EXIT);
    EXPECT_TRUE(scheduler_.waitForExit());
}

TEST_F(Lifecycle, EndOfTheLogOnAsksTheSameQuestion) {
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

TEST_F(Lifecycle, NoAtTheEndOfTheLogOnLeavesEverythingAsItWas) {
    driver::saveEntries({pendingEntry()});
    base::writeString(HKEY_LOCAL_MACHINE, runValue, "old");
    ASSERT_TRUE(scheduler_.start());
    PostMessageA(scheduler_.window(), WM_ENDSESSION, TRUE, 0);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    SchedulerProcess::press(box, IDNO);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    EXPECT_TRUE(IsWindowVisible(scheduler_.window()));
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, runValue), "old");
    EXPECT_EQ(driver::savedSchedule().size(), 1U);
    // Its timer and its commands work on.
    scheduler_.command(IDM_EXIT);
    const HWND asked = waitForBox();
    ASSERT_NE(asked, nullptr);
    SchedulerProcess::press(asked, IDYES);
    EXPECT_TRUE(scheduler_.waitForExit());
}

TEST_F(Lifecycle, TheScheduleIsSavedBeforeTheEndOfTheLogOnIsAskedAbout) {
    driver::saveEntries({pendingEntry()});
    ASSERT_TRUE(scheduler_.start());
    ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    PostMessageA(scheduler_.window(), WM_ENDSESSION, TRUE, 0);
    ASSERT_NE(waitForBox(), nullptr);
    EXPECT_EQ(driver::savedSchedule().size(), 1U) << "nobody may have the time to answer";
}

TEST_F(Lifecycle, TheScheduleIsSavedWhenTheLogOnEndsWhileTheQuestionStands) {
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

TEST_F(Lifecycle, ExitWritesTheAutostartValueWhenThePreferencesSaySo) {
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, runValue), "") << "only exit touches it";
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    ASSERT_TRUE(scheduler_.waitForExit());
    const std::string value = base::getString(HKEY_LOCAL_MACHINE, runValue);
    EXPECT_EQ(value, "\"" + driver::buildFolder() + "scheduler.exe\" /s");
}

TEST_F(Lifecycle, ExitDeletesTheAutostartValueWhenThePreferencesSaySo) {
    base::writeNumber(HKEY_CURRENT_USER, stateKey + "\\Autostart", 0);
    base::writeString(HKEY_LOCAL_MACHINE, runValue, "old");
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    ASSERT_TRUE(scheduler_.waitForExit());
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, runValue), "");
}

TEST_F(Lifecycle, AKilledProgramLeavesTheAutostartValueAsItWas) {
    base::writeString(HKEY_LOCAL_MACHINE, runValue, "old");
    ASSERT_TRUE(scheduler_.start());
    scheduler_.kill();
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, runValue), "old");
}

TEST_F(Lifecycle, AMissingOrForeignScheduleGivesAnEmptyOne) {
    for (const std::string content : {"", "x", "PK\x03\x04 not a schedule at all", "\x1C\xC7\x46"}) {
        driver::writeText(scheduler::schedulePath(), content);
        ASSERT_TRUE(scheduler_.start());
        EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
        ASSERT_TRUE(scheduler_.waitForExit());
        EXPECT_EQ(driver::readBytes(scheduler::schedulePath()), std::string("\x1C\xC7\x46\0\0\0\0\0", 8));
    }
    DeleteFileA(scheduler::schedulePath().c_str());
    ASSERT_TRUE(scheduler_.start());
    EXPECT_TRUE(scheduler_.isRunning());
}

TEST_F(Lifecycle, RunStateInTheFileIsClearedByAStart) {
    ScheduledProject entry = pendingEntry();
    entry.running = 1;
    entry.runNumber = 7;
    entry.waitingSince = TimeValue(5);
    entry.runStart = TimeValue(6);
    entry.retriesDone = 2;
    entry.disabled = 1;
    driver::saveEntries({entry});
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    ASSERT_TRUE(scheduler_.waitForExit());
    ScheduledProject expected = pendingEntry();
    expected.time = entry.time;
    expected.nextRun = entry.time;
    expected.disabled = 1;
    ASSERT_EQ(driver::savedSchedule().size(), 1U);
    EXPECT_TRUE(driver::savedSchedule()[0] == expected);
}

TEST_F(Lifecycle, TheWindowComesBackWhereItWasLeft) {
    ASSERT_TRUE(scheduler_.start());
    SetWindowPos(scheduler_.window(), nullptr, 40, 60, 500, 300, SWP_NOZORDER);
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    ASSERT_TRUE(scheduler_.waitForExit());
    ASSERT_TRUE(scheduler_.start());
    RECT place{};
    GetWindowRect(scheduler_.window(), &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 60);
    EXPECT_EQ(place.right - place.left, 500);
    EXPECT_EQ(place.bottom - place.top, 300);
}

TEST_F(Lifecycle, AStartAtLogOnKeepsASavedMaximisedForm) {
    ASSERT_TRUE(scheduler_.start());
    ShowWindow(scheduler_.window(), SW_MAXIMIZE);
    for (const std::string switches : {"/s", ""}) {
        EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
        ASSERT_TRUE(scheduler_.waitForExit());
        ASSERT_TRUE(scheduler_.start(switches));
    }
    EXPECT_TRUE(IsZoomed(scheduler_.window()));
}

} // namespace
