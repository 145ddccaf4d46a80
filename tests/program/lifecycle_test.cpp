// Starting once, hiding, being told to close, and what is left behind at exit.

#include "lib/base/registry.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/outcomes.h"
#include "tests/program/scheduledriver.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

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

TEST_F(Lifecycle, AStartAtLogOnTakesNoKeys) {
    const auto keyboard = [this] {
        GUITHREADINFO information{};
        information.cbSize = sizeof(information);
        GetGUIThreadInfo(GetWindowThreadProcessId(scheduler_.window(), nullptr), &information);
        return information;
    };
    ASSERT_TRUE(scheduler_.start("/s"));
    SendMessageA(scheduler_.window(), WM_NULL, 0, 0); // the start is over when it is answered
    EXPECT_EQ(keyboard().hwndActive, nullptr);
    EXPECT_EQ(keyboard().hwndFocus, nullptr);
    scheduler_.kill();
    ASSERT_TRUE(scheduler_.start());
    EXPECT_TRUE(waitUntil([&] { return keyboard().hwndActive == scheduler_.window(); }));
    EXPECT_TRUE(waitUntil([&] {
        return keyboard().hwndFocus == FindWindowExA(scheduler_.window(), nullptr, WC_LISTVIEWA, nullptr);
    }));
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

TEST_F(Lifecycle, TheIconStaysWhileTheWindowIsHiddenAndGoesAtExit) {
    ASSERT_TRUE(scheduler_.start());
    const HWND window = scheduler_.window();
    const auto shellHasIcon = [&] {
        NOTIFYICONDATAA icon{};
        icon.cbSize = NOTIFYICONDATAA_V1_SIZE;
        icon.hWnd = window;
        return Shell_NotifyIconA(NIM_MODIFY, &icon) != FALSE;
    };
    EXPECT_TRUE(shellHasIcon());
    SendMessageA(window, WM_CLOSE, 0, 0);
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_TRUE(shellHasIcon());
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    ASSERT_TRUE(scheduler_.waitForExit());
    EXPECT_FALSE(shellHasIcon());
}

TEST_F(Lifecycle, ARunThatIsDueAndEndsWhileTheWindowIsHiddenIsRecorded) {
    const driver::SampleSpider spider;
    ScheduledProject entry = pendingEntry();
    entry.path = spider.makeProject("news.kra", "ms=500\nresult=3 pages are missing\nerror=1\n");
    entry.time = TimeValue::now() + TimeSpan::fromSeconds(4);
    driver::saveEntries({entry});
    ASSERT_TRUE(scheduler_.start());
    SendMessageA(scheduler_.window(), WM_CLOSE, 0, 0);
    EXPECT_EQ(spider.logged("start run"), 0U);
    std::vector<ScheduledProject> saved;
    EXPECT_TRUE(waitUntil([&] {
        saved = driver::savedSchedule(); // none while it is being written
        return saved.size() == 1 && !saved[0].lastResult.empty();
    }));
    EXPECT_EQ(spider.logged("end run 1"), 1U);
    EXPECT_FALSE(IsWindowVisible(scheduler_.window()));
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_EQ(saved[0].lastResult, "3 pages are missing");
    EXPECT_EQ(saved[0].running, 0);
    EXPECT_GE(saved[0].lastRun, entry.time);
}

TEST_F(Lifecycle, ASingleClickOnTheIconBringsAShownWindowForward) {
    ASSERT_TRUE(scheduler_.start());
    const HWND other = CreateWindowExA(0, "STATIC", "another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       100, 100, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    ASSERT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    AllowSetForegroundWindow(ASFW_ANY);
    for (const UINT message : {UINT{WM_LBUTTONUP}, UINT{WM_MOUSEMOVE}})
        SendMessageA(scheduler_.window(), base::WM_TRAY_NOTIFY, 0, static_cast<LPARAM>(message));
    EXPECT_EQ(GetForegroundWindow(), other) << "not by every notice";
    SendMessageA(scheduler_.window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDOWN);
    EXPECT_EQ(GetForegroundWindow(), scheduler_.window());
    DestroyWindow(other);
}

TEST_F(Lifecycle, DisplayRestoresAMinimisedWindow) {
    ASSERT_TRUE(scheduler_.start());
    for (const bool byIcon : {false, true}) {
        ShowWindow(scheduler_.window(), SW_MINIMIZE);
        ASSERT_TRUE(waitUntil([&] { return IsIconic(scheduler_.window()) != FALSE; }));
        if (byIcon)
            SendMessageA(scheduler_.window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDBLCLK);
        else
            SendMessageA(scheduler_.window(), WM_COMMAND, IDM_DISPLAY, 0);
        EXPECT_FALSE(IsIconic(scheduler_.window())) << byIcon;
        EXPECT_TRUE(IsWindowVisible(scheduler_.window())) << byIcon;
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
