// Leaving: the exit question, the end of the log-on, and the automatic start that is written then.

#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"

using driver::autostartValue;
using driver::pendingEntry;
using driver::SchedulerProcess;
using driver::waitUntil;

namespace {

class Exit : public driver::ProgramTest {
protected:
    static std::string autostart() { return base::getString(HKEY_LOCAL_MACHINE, autostartValue); }

    void answer(int button) {
        const HWND box = waitForBox();
        ASSERT_NE(box, nullptr);
        SchedulerProcess::press(box, button);
        ASSERT_TRUE(button == IDYES ? scheduler_.waitForExit()
                                    : waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    }
};

TEST_F(Exit, TheQuestionIsAskedUntilItIsAnsweredWithYes) {
    ASSERT_NO_FATAL_FAILURE(startWith({pendingEntry()}));
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::textOf(box), "Corvane Scheduler");
    EXPECT_EQ(SchedulerProcess::textOfBox(box),
              "The Scheduler will not be able to launch projects if you exit.  You can choose \"Close\" to "
              "hide the main window and still leave the program active.  Are you sure you want to exit?");
    ASSERT_NO_FATAL_FAILURE(answer(IDNO));
    EXPECT_TRUE(scheduler_.isRunning());
    EXPECT_TRUE(IsWindowVisible(window()));
    scheduler_.command(IDM_EXIT);
    ASSERT_NO_FATAL_FAILURE(answer(IDYES));
    EXPECT_EQ(scheduler_.exitCode(), 0U);
}

TEST_F(Exit, TheEndOfTheLogOnSavesAndAsksTheSameQuestion) {
    base::writeString(HKEY_LOCAL_MACHINE, autostartValue, "old");
    ASSERT_NO_FATAL_FAILURE(startWith({pendingEntry()}));
    EXPECT_EQ(SendMessageA(window(), WM_QUERYENDSESSION, 0, 0), 1);
    SendMessageA(window(), WM_ENDSESSION, FALSE, 0);
    for (const int button : {IDNO, IDYES}) {
        ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
        PostMessageA(window(), WM_ENDSESSION, TRUE, 0);
        ASSERT_NE(waitForBox(), nullptr);
        EXPECT_EQ(driver::savedSchedule().size(), 1U) << "there may be no time to answer";
        EXPECT_EQ(autostart(), "old");
        ASSERT_NO_FATAL_FAILURE(answer(button));
    }
}

TEST_F(Exit, TheStateIsSavedWhenTheLogOnEndsWhileTheQuestionIsOpen) {
    ASSERT_NO_FATAL_FAILURE(startWith({pendingEntry()}));
    ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    SetWindowPos(window(), nullptr, 40, 60, 500, 300, SWP_NOZORDER);
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(driver::savedSchedule().empty()) << "asking alone saves nothing";
    EXPECT_EQ(SendMessageA(window(), WM_QUERYENDSESSION, 0, 0), 1);
    EXPECT_EQ(SendMessageA(window(), WM_ENDSESSION, TRUE, 0), 0);
    EXPECT_EQ(scheduler_.messageBox(), box) << "it is the same question, and still open";
    EXPECT_EQ(driver::savedSchedule().size(), 1U);
    // The platform ends the process now.
    scheduler_.kill();
    ASSERT_TRUE(scheduler_.start());
    RECT place{};
    GetWindowRect(window(), &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.right - place.left, 500);
}

TEST_F(Exit, ExitAloneWritesOrDeletesTheAutostartValue) {
    for (const bool wanted : {true, false}) {
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Autostart", wanted ? 1 : 0);
        base::writeString(HKEY_LOCAL_MACHINE, autostartValue, "old");
        ASSERT_TRUE(scheduler_.start());
        scheduler_.kill();
        EXPECT_EQ(autostart(), "old");
        ASSERT_TRUE(scheduler_.start());
        ASSERT_NO_FATAL_FAILURE(close());
        EXPECT_EQ(autostart(), wanted ? "\"" + driver::buildFolder() + "scheduler.exe\" /s" : "");
    }
}

} // namespace
