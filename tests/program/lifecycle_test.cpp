// Starting once, hiding, being told to close, and coming back as it was left.

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

using base::TimeSpan;
using base::TimeValue;
using driver::pendingEntry;
using driver::SchedulerProcess;
using driver::waitUntil;
using scheduler::ScheduledProject;

namespace {

class Lifecycle : public driver::ProgramTest {};

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
    const auto active = [this] { return driver::inputStateOf(scheduler_.window()).hwndActive; };
    ASSERT_TRUE(scheduler_.start("/s"));
    SendMessageA(scheduler_.window(), WM_NULL, 0, 0); // the start is over when it is answered
    EXPECT_EQ(active(), nullptr);
    EXPECT_EQ(scheduler_.focused(), nullptr);
    scheduler_.kill();
    ASSERT_TRUE(scheduler_.start());
    EXPECT_TRUE(waitUntil([&] { return active() == scheduler_.window(); }));
    EXPECT_TRUE(waitUntil([&] {
        return scheduler_.focused() == FindWindowExA(scheduler_.window(), nullptr, WC_LISTVIEWA, nullptr);
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
    ASSERT_NO_FATAL_FAILURE(close());
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

TEST_F(Lifecycle, AMissingOrForeignScheduleGivesAnEmptyOne) {
    for (const std::string content : {"", "x", "PK\x03\x04 not a schedule at all", "\x1C\xC7\x46"}) {
        driver::writeText(scheduler::schedulePath(), content);
        ASSERT_TRUE(scheduler_.start());
        ASSERT_NO_FATAL_FAILURE(close());
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
    ASSERT_NO_FATAL_FAILURE(close());
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
    ASSERT_NO_FATAL_FAILURE(restart());
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
        ASSERT_NO_FATAL_FAILURE(restart(switches));
    }
    EXPECT_TRUE(IsZoomed(scheduler_.window()));
}

} // namespace
