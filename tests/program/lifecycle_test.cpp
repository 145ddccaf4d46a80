#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"

using driver::SchedulerProcess;
using driver::waitUntil;

namespace {

class Lifecycle : public driver::ProgramTest {
protected:
    bool isVisible() const { return IsWindowVisible(window()) != FALSE; }
    void notifyOfMouse(UINT message) const {
        SendMessageA(window(), base::WM_TRAY_NOTIFY, 0, static_cast<LPARAM>(message));
    }
};

TEST_F(Lifecycle, CloseEndsARunningInstanceAndDoesNothingWithoutOne) {
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    EXPECT_EQ(FindWindowA(nullptr, "Corvane Scheduler"), nullptr);
    for (const std::string word : {"/CLOSE", "/closeall"}) {
        ASSERT_TRUE(scheduler_.start());
        EXPECT_EQ(SchedulerProcess::runToEnd(word), 0U);
        EXPECT_TRUE(scheduler_.waitForExit()) << word;
        EXPECT_EQ(scheduler_.exitCode(), 0U);
    }
}

TEST_F(Lifecycle, AManualStartTakesTheFocusAndAStartAtLogOnIsHidden) {
    const auto active = [this] { return driver::inputStateOf(window()).hwndActive; };
    for (const std::string word : {" /s", "/Start"}) {
        ASSERT_TRUE(scheduler_.start(word));
        scheduler_.tick(); // returns after start-up
        EXPECT_FALSE(isVisible()) << word;
        EXPECT_EQ(active(), nullptr);
        scheduler_.kill();
    }
    ASSERT_TRUE(scheduler_.start());
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
    EXPECT_TRUE(isVisible());
    EXPECT_TRUE(waitUntil([&] { return active() == window(); }));
    EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() == list().handle(); }));
}

TEST_F(Lifecycle, ASecondStartShowsTheFirstInstanceUnlessItIsSuspended) {
    ASSERT_TRUE(scheduler_.start("/s"));
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(SchedulerProcess::runToEnd(""), 0U);
    EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
    EXPECT_FALSE(isVisible());
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(SchedulerProcess::runToEnd(""), 0U);
    EXPECT_TRUE(isVisible());
    EXPECT_TRUE(scheduler_.isRunning());
}

TEST_F(Lifecycle, ClosingTheWindowHidesItAndTheIconShowsItAgain) {
    ASSERT_TRUE(scheduler_.start());
    for (const bool byMenu : {false, true}) {
        SendMessageA(window(), byMenu ? WM_COMMAND : WM_CLOSE, byMenu ? IDM_CLOSE : 0, 0);
        EXPECT_FALSE(isVisible());
        notifyOfMouse(WM_LBUTTONDOWN);
        EXPECT_FALSE(isVisible()) << "a single click";
        if (byMenu)
            carryOut(IDM_DISPLAY);
        else
            notifyOfMouse(WM_LBUTTONDBLCLK);
        EXPECT_TRUE(isVisible());
    }
}

TEST_F(Lifecycle, DisplayRestoresAMinimisedWindow) {
    ASSERT_TRUE(scheduler_.start());
    ShowWindow(window(), SW_MINIMIZE);
    ASSERT_TRUE(waitUntil([&] { return IsIconic(window()) != FALSE; }));
    carryOut(IDM_DISPLAY);
    EXPECT_FALSE(IsIconic(window()));
    EXPECT_TRUE(isVisible());
}

TEST_F(Lifecycle, AMissingOrForeignFileLoadsAsAnEmptySchedule) {
    for (const std::string content : {"", "PK\x03\x04 not a schedule at all"}) {
        DeleteFileA(scheduler::schedulePath().c_str());
        if (!content.empty())
            driver::writeText(scheduler::schedulePath(), content);
        ASSERT_TRUE(scheduler_.start());
        ASSERT_NO_FATAL_FAILURE(close());
        EXPECT_EQ(driver::readBytes(scheduler::schedulePath()), std::string("\x1C\xC7\x46\0\0\0\0\0", 8));
    }
}

TEST_F(Lifecycle, TheWindowsPlaceAndSizeAreRestored) {
    ASSERT_TRUE(scheduler_.start());
    SetWindowPos(window(), nullptr, 40, 60, 500, 300, SWP_NOZORDER);
    ASSERT_NO_FATAL_FAILURE(restart());
    RECT place{};
    GetWindowRect(window(), &place);
    const RECT expected{40, 60, 540, 360};
    EXPECT_TRUE(EqualRect(&place, &expected));
    ShowWindow(window(), SW_MAXIMIZE);
    for (const std::string switches : {"/s", ""})
        ASSERT_NO_FATAL_FAILURE(restart(switches));
    EXPECT_TRUE(IsZoomed(window())) << "a start at log-on in between keeps it maximised";
}

} // namespace
