// Adding to the schedule in the editor of the real program: one entry of every kind, and several files.
//
// The clock starts on Tuesday 2026-03-10 at 10:00.

#include "resources/ids.h"
#include "tests/program/editortest.h"
#include "tests/program/listdriver.h"

#include <gmock/gmock.h>

#include <functional>

using base::TimeValue;
using driver::savedSchedule;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::SizeIs;

namespace {

TimeValue at(int month, int day, int hour, int minute) {
    return TimeValue::fromLocal(2026, month, day, hour, minute, 0, -1);
}

class AddByEditor : public driver::AddInEditor {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(AddInEditor::SetUp());
        ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:backup.exe"));
        editor_.turnTo(IDD_SCHEDULE_PAGE);
    }

    /// OK adds an entry of that kind with the defaults of a new one, but for what `differs` sets.
    void expectAdded(ScheduleKind kind, const std::function<void(ScheduledProject&)>& differs) const {
        const ScheduledProject added = addedByOk();
        ScheduledProject wanted;
        wanted.path = "run:backup.exe";
        wanted.kind = kind;
        wanted.afterIndex = 1;
        wanted.time = added.time; // depends on the clock
        wanted.nextRun = TimeValue::never();
        differs(wanted);
        EXPECT_EQ(added, wanted);
    }
};

TEST_F(AddByEditor, AfterAnotherProject) {
    EXPECT_TRUE(editor_.isChecked(IDC_KIND_AFTER_PROJECT)) << "a new entry follows the last one";
    EXPECT_EQ(editor_.itemCount(IDC_AFTER_PROJECT), 2);
    EXPECT_EQ(editor_.selected(IDC_AFTER_PROJECT), 1);
    EXPECT_EQ(editor_.text(IDC_AFTER_PROJECT), "archive");
    editor_.choose(IDC_AFTER_PROJECT, 0);
    EXPECT_EQ(editor_.text(IDC_AFTER_PROJECT), "news");
    ASSERT_TRUE(editor_.replace(IDC_AFTER_DELAY, "90"));
    expectAdded(ScheduleKind::AfterProject, [](ScheduledProject& wanted) {
        wanted.afterIndex = 0;
        wanted.minutes = 90;
    });
}

TEST_F(AddByEditor, AtStartup) {
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::AtStartup));
    ASSERT_TRUE(editor_.replace(IDC_STARTUP_DELAY, "15"));
    expectAdded(ScheduleKind::AtStartup, [](ScheduledProject& wanted) { wanted.minutes = 15; });
}

TEST_F(AddByEditor, Hourly) {
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Hourly));
    ASSERT_TRUE(editor_.replace(IDC_HOURLY_MINUTE, "59"));
    expectAdded(ScheduleKind::Hourly, [](ScheduledProject& wanted) {
        wanted.minutes = 59;
        wanted.nextRun = at(3, 10, 10, 59);
    });
}

TEST_F(AddByEditor, MondayAndThursdayAtHalfPastSevenInTheEvening) {
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Daily));
    for (const int day : {IDC_TUESDAY, IDC_WEDNESDAY, IDC_FRIDAY, IDC_SATURDAY, IDC_SUNDAY})
        editor_.click(day);
    ASSERT_TRUE(editor_.replace(IDC_DAILY_TIME, "7:30 pm"));
    expectAdded(ScheduleKind::Daily, [](ScheduledProject& wanted) {
        wanted.time = at(3, 10, 19, 30);
        wanted.weekdays = {1, 0, 0, 1, 0, 0, 0};
        wanted.nextRun = at(3, 12, 19, 30);
    });
}

TEST_F(AddByEditor, Monthly) {
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Monthly));
    ASSERT_TRUE(editor_.replace(IDC_MONTHLY_DAY, "5"));
    ASSERT_TRUE(editor_.replace(IDC_MONTHLY_TIME, "0645"));
    expectAdded(ScheduleKind::Monthly, [](ScheduledProject& wanted) {
        wanted.dayOfMonth = 5;
        wanted.time = at(3, 10, 6, 45);
        wanted.nextRun = at(4, 5, 6, 45);
    });
}

TEST_F(AddByEditor, JustOnce) {
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Once));
    EXPECT_EQ(editor_.text(IDC_ONCE_TIME).substr(0, 9), "03/10/26 ") << "it offers the near future";
    ASSERT_TRUE(editor_.replace(IDC_ONCE_TIME, "3/31/2026 11:45 pm"));
    expectAdded(ScheduleKind::Once, [](ScheduledProject& wanted) {
        wanted.time = at(3, 31, 23, 45);
        wanted.nextRun = at(3, 31, 23, 45);
    });
}

TEST_F(AddByEditor, HowItIsRun) {
    editor_.turnTo(IDD_PROJECT_PAGE);
    editor_.choose(IDC_RUN_COMMAND, 3);
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "120"));
    editor_.click(IDC_DISCONNECT);
    const ScheduledProject added = addedByOk();
    EXPECT_EQ(added.runCommand, scheduler::RunCommand::RunCompleteRefresh);
    EXPECT_EQ(added.timeLimitMinutes, 120);
    EXPECT_EQ(added.disconnectWhenDone, 1);
    EXPECT_EQ(added.dialupEntry, "");
}

TEST_F(AddByEditor, QuotedFilesThatAreTypedAreOneEntry) {
    editor_.turnTo(IDD_PROJECT_PAGE);
    const std::string typed = "\"C:\\one.kra\" \"C:\\two.kra\"";
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, typed));
    EXPECT_EQ(addedByOk().path, typed);
}

TEST_F(AddByEditor, CancelAddsNothing) {
    editor_.press(IDCANCEL);
    ASSERT_TRUE(editor_.closes());
    EXPECT_THAT(savedSchedule(), SizeIs(2));
}

class AddToAnEmptySchedule : public driver::ProgramTest {};

TEST_F(AddToAnEmptySchedule, StartsWithAtStartupAndCannotWait) {
    driver::EditorDriver editor(scheduler_);
    ASSERT_TRUE(scheduler_.start());
    ASSERT_TRUE(editor.openAdd());
    EXPECT_TRUE(editor.isChecked(IDC_KIND_STARTUP));
    EXPECT_FALSE(editor.isEnabled(IDC_KIND_AFTER_PROJECT));
    EXPECT_EQ(editor.itemCount(IDC_AFTER_PROJECT), 0);
    ASSERT_TRUE(editor.replace(IDC_PROJECT_PATH, "run:backup.exe"));
    const auto saved = editor.saveByOk();
    ASSERT_THAT(saved, SizeIs(1));
    EXPECT_EQ(saved[0].kind, ScheduleKind::AtStartup);
}

} // namespace
