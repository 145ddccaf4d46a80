#include "scheduler/ui/framework/messagepump.h"
#include "tests/scheduler/ui/mainwindowtest.h"
#include "tests/support/fulldisk.h"

#include <cstring>

namespace {

class FullDisk : public test::MainWindowTest {
protected:
    FullDisk() {
        save({entry("run:work")});
        start();
        select(0);
        EXPECT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    }
    ~FullDisk() override {
        EXPECT_TRUE(boxes.shown.empty());
        DeleteFileA(scheduler::schedulePath().c_str());
    }

    static bool nothingIsSaved() {
        scheduler::ScheduleList schedule;
        return !scheduler::loadSchedule(schedule, scheduler::scheduleMagic);
    }

private:
    test::Override<test::GetWindowsDirectoryACall> diskD_{[](LPSTR buffer, UINT) {
        std::strcpy(buffer, "D:\\");
        return UINT{3};
    }};
};

TEST_F(FullDisk, TheNextSaveWritesWhatAFailedSaveCouldNot) {
    tick();
    {
        const test::FullDisk full;
        send(scheduler::WM_RUN_FINISHED, 1);
        EXPECT_EQ(nextRun(0), "next startup");
        command(IDM_ENABLE);
        EXPECT_EQ(nextRun(0), "(disabled)");
        EXPECT_TRUE(nothingIsSaved());
    }
    command(IDM_ENABLE);
    EXPECT_EQ(nextRun(0), "next startup");
    EXPECT_FALSE(saved()[0].disabled);
    EXPECT_FALSE(saved()[0].running);
    EXPECT_NE(saved()[0].lastRun, base::TimeValue());
}

TEST_F(FullDisk, TheProgramExitsAndSavesTheColumnWidths) {
    command(IDM_ENABLE); // disables the entry, so that Exit does not ask
    ASSERT_TRUE(DeleteFileA(scheduler::schedulePath().c_str()));
    const test::FullDisk full;
    PostMessageA(handle(), WM_COMMAND, IDM_EXIT, 0);
    EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 0);
    EXPECT_TRUE(nothingIsSaved());
    std::uint32_t width = 0;
    EXPECT_TRUE(scheduler::appRegistryKey(scheduler::stateSection).readNumber("Column0", width));
}

} // namespace
