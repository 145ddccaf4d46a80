// The disk of the schedule is full: the program goes on with what it knows, without a word, and what could
// not be saved is saved by the next save that has room.

#include "lib/base/base.h"
#include "lib/base/registry.h"
#include "resources/ids.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/mainwindow.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"
#include "tests/support/fulldisk.h"
#include "tests/support/windowsondiskd.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace scheduler {
namespace {

class FullDiskTest : public testing::Test {
protected:
    FullDiskTest() {
        base::applicationName = "Corvane Scheduler";
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
        ScheduleList schedule;
        schedule.append(atStartup("C:\\Sites\\news.kra"));
        EXPECT_TRUE(saveSchedule(schedule));
        EXPECT_TRUE(window_.start("/s", SW_SHOWNORMAL));
        // In its old place it had room.
        EXPECT_TRUE(DeleteFileA(schedulePath().c_str()));
        test::shownMessages.clear();
    }
    ~FullDiskTest() override { DeleteFileA(schedulePath().c_str()); }

    /// Due at once when the program is started at log-on.
    static ScheduledProject atStartup(const std::string& path) {
        ScheduledProject entry;
        entry.path = path;
        entry.kind = ScheduleKind::AtStartup;
        return entry;
    }

    void command(WPARAM id) const { SendMessageA(window_.handle(), WM_COMMAND, id, 0); }

    void selectFirst() const { ListView_SetItemState(list(), 0, LVIS_SELECTED, LVIS_SELECTED); }
    HWND list() const { return GetDlgItem(window_.handle(), IDC_SCHEDULE_LIST); }

    std::string nextRunShown() const {
        std::array<char, 100> text{};
        LVITEMA item{};
        item.iSubItem = static_cast<int>(ScheduleColumn::NextRun);
        item.pszText = text.data();
        item.cchTextMax = static_cast<int>(text.size());
        SendMessageA(list(), LVM_GETITEMTEXTA, 0, reinterpret_cast<LPARAM>(&item));
        return text.data();
    }

    /// The first entry of what is saved.
    static ScheduledProject saved() {
        ScheduleList schedule;
        EXPECT_TRUE(loadSchedule(schedule, scheduleMagic));
        return schedule.empty() ? ScheduledProject() : schedule[0];
    }
    static bool nothingIsSaved() {
        ScheduleList schedule;
        return !loadSchedule(schedule, scheduleMagic);
    }

    MainWindow window_;
};

TEST_F(FullDiskTest, AChangeStandsAndIsSavedByTheNextSave) {
    selectFirst();
    {
        const test::FullDisk full;
        command(IDM_ENABLE);
        EXPECT_TRUE(nothingIsSaved());
        EXPECT_EQ(nextRunShown(), "(disabled)");
    }
    command(IDM_ENABLE);
    EXPECT_FALSE(saved().disabled);
    EXPECT_NE(nextRunShown(), "(disabled)");
    command(IDM_ENABLE);
    EXPECT_TRUE(saved().disabled);
    EXPECT_TRUE(test::shownMessages.empty());
}

TEST_F(FullDiskTest, TheEndOfARunStandsAndIsSavedByTheNextSave) {
    command(IDM_TEST);
    ASSERT_EQ(nextRunShown(), "Running");
    {
        const test::FullDisk full;
        SendMessageA(window_.handle(), WM_RUN_FINISHED, 1, 0);
        EXPECT_TRUE(nothingIsSaved());
        EXPECT_NE(nextRunShown(), "Running");
    }
    selectFirst();
    command(IDM_ENABLE);
    EXPECT_NE(saved().lastRun, base::TimeValue());
    EXPECT_FALSE(saved().running);
    EXPECT_TRUE(test::shownMessages.empty());
}

TEST_F(FullDiskTest, TheProgramEndsAsEver) {
    selectFirst();
    command(IDM_ENABLE); // nothing is due: no question
    ASSERT_TRUE(DeleteFileA(schedulePath().c_str()));
    const test::FullDisk full;
    PostMessageA(window_.handle(), WM_COMMAND, IDM_EXIT, 0);
    EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 0);
    EXPECT_TRUE(nothingIsSaved());
    std::uint32_t width = 0;
    EXPECT_TRUE(appRegistryKey(stateSection).readNumber("Column0", width)) << "the rest is saved";
    EXPECT_TRUE(test::shownMessages.empty());
}

} // namespace
} // namespace scheduler
