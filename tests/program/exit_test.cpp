#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"

using driver::pendingEntry;
using driver::SchedulerProcess;
using driver::waitUntil;

namespace {

class Exit : public driver::ProgramTest {
protected:
    void answer(int button) {
        const HWND box = waitForBox();
        ASSERT_NE(box, nullptr);
        SchedulerProcess::press(box, button);
        ASSERT_TRUE(button == IDYES ? scheduler_.waitForExit()
                                    : waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
    }
};

TEST_F(Exit, NoKeepsTheProgramRunningAndYesEndsIt) {
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

TEST_F(Exit, TheStateIsSavedWhenTheSessionEndsWhileTheQuestionIsOpen) {
    ASSERT_NO_FATAL_FAILURE(startWith({pendingEntry()}));
    ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    SetWindowPos(window(), nullptr, 40, 60, 500, 300, SWP_NOZORDER);
    SendMessageA(window(), WM_ENDSESSION, FALSE, 0); // the session does not end
    scheduler_.command(IDM_EXIT);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(driver::savedSchedule().empty()) << "the question alone saves nothing";
    EXPECT_EQ(SendMessageA(window(), WM_QUERYENDSESSION, 0, 0), 1);
    EXPECT_EQ(SendMessageA(window(), WM_ENDSESSION, TRUE, 0), 0);
    EXPECT_EQ(scheduler_.messageBox(), box) << "no second question";
    EXPECT_EQ(driver::savedSchedule().size(), 1U);
    scheduler_.kill(); // as Windows does at the end of a session
    ASSERT_TRUE(scheduler_.start());
    RECT place{};
    GetWindowRect(window(), &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.right - place.left, 500);
}

} // namespace
