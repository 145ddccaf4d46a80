// The schedule editor of the real program: adding, editing, leaving, refusals, and a run meanwhile.
//
// The clock starts on Tuesday 2026-03-10 at 10:00.

#include "resources/ids.h"
#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"
#include "tests/support/schedulekinds.h"

#include <gmock/gmock.h>

using base::TimeValue;
using driver::EditorDriver;
using driver::savedSchedule;
using driver::SchedulerProcess;
using driver::sleeping;
using driver::waitUntil;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using test::allKinds;
using test::buttonOf;
using testing::SizeIs;

namespace {

TimeValue at(int month, int day, int hour, int minute, int second = 0) {
    return TimeValue::fromLocal(2026, month, day, hour, minute, second, -1);
}

/// Not due before the afternoon. No field shows the seconds of its time.
ScheduledProject entryOf(ScheduleKind kind) {
    ScheduledProject entry;
    entry.path = "run:backup.exe";
    entry.kind = kind;
    entry.time = at(3, 10, 15, 0, 17);
    entry.minutes = 50;
    entry.afterIndex = 1;
    entry.dayOfMonth = 30;
    entry.weekdays = {1, 0, 1, 0, 1, 0, 1};
    entry.timeLimitMinutes = 30;
    entry.dialupEntry = "Office line";
    entry.runCommand = RunCommand::RunUpdateOnly;
    return entry;
}

class Editor : public driver::ProgramTest {
protected:
    /// Two entries to follow, and one of each kind after them.
    void startWithEachKind() {
        std::vector<ScheduledProject> entries = {sleeping("C:\\news.kra"), sleeping("C:\\archive.kra")};
        for (const ScheduleKind kind : allKinds)
            entries.push_back(entryOf(kind));
        startWith(entries);
    }

    /// Opens the editor on the entry of a kind; its position.
    std::size_t edit(ScheduleKind kind) {
        const int row = 2 + static_cast<int>(kind);
        list().select({row});
        EXPECT_TRUE(editor_.openEdit());
        return static_cast<std::size_t>(row);
    }

    /// Fills in both pages; what becomes of the entry that they show.
    ScheduledProject fillIn(ScheduleKind kind, ScheduledProject entry) const {
        EXPECT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:other.exe /x"));
        editor_.choose(IDC_RUN_COMMAND, 3);
        editor_.choose(IDC_AUTOCONNECT, 0);
        EXPECT_TRUE(editor_.replace(IDC_TIME_LIMIT, "9999"));
        editor_.click(IDC_DISCONNECT);
        entry.path = "run:other.exe /x";
        entry.runCommand = RunCommand::RunCompleteRefresh;
        entry.dialupEntry = "";
        entry.timeLimitMinutes = 9999;
        entry.disconnectWhenDone = 1;

        editor_.turnTo(IDD_SCHEDULE_PAGE);
        EXPECT_TRUE(editor_.chooseKind(kind));
        entry.kind = kind;
        entry.nextRun = TimeValue::never();
        switch (kind) {
        case ScheduleKind::AfterProject:
            editor_.choose(IDC_AFTER_PROJECT, 0);
            EXPECT_TRUE(editor_.replace(IDC_AFTER_DELAY, "90"));
            entry.afterIndex = 0;
            entry.minutes = 90;
            break;
        case ScheduleKind::AtStartup:
            EXPECT_TRUE(editor_.replace(IDC_STARTUP_DELAY, "15"));
            entry.minutes = 15;
            break;
        case ScheduleKind::Hourly:
            EXPECT_TRUE(editor_.replace(IDC_HOURLY_MINUTE, "59"));
            entry.minutes = 59;
            entry.nextRun = at(3, 10, 10, 59);
            break;
        case ScheduleKind::Daily:
            for (int day = IDC_MONDAY; day <= IDC_SUNDAY; ++day)
                if (editor_.isChecked(day) != (day == IDC_MONDAY || day == IDC_THURSDAY))
                    editor_.click(day);
            EXPECT_TRUE(editor_.replace(IDC_DAILY_TIME, "7:30 pm"));
            entry.weekdays = {1, 0, 0, 1, 0, 0, 0};
            entry.time = at(3, 10, 19, 30);
            entry.nextRun = at(3, 12, 19, 30);
            break;
        case ScheduleKind::Monthly:
            EXPECT_TRUE(editor_.replace(IDC_MONTHLY_DAY, "5"));
            EXPECT_TRUE(editor_.replace(IDC_MONTHLY_TIME, "0645"));
            entry.dayOfMonth = 5;
            entry.time = at(3, 10, 6, 45);
            entry.nextRun = at(4, 5, 6, 45);
            break;
        case ScheduleKind::Once:
            EXPECT_EQ(editor_.text(IDC_ONCE_TIME).substr(0, 9), "03/10/26 ");
            EXPECT_TRUE(editor_.replace(IDC_ONCE_TIME, "3/31/2026 11:45 pm"));
            entry.time = at(3, 31, 23, 45);
            entry.nextRun = at(3, 31, 23, 45);
            break;
        }
        return entry;
    }

    /// The entry at a position of the schedule that OK saves.
    ScheduledProject savedByOk(std::size_t position) const {
        const auto saved = editor_.saveByOk();
        EXPECT_LT(position, saved.size());
        return position < saved.size() ? saved[position] : ScheduledProject();
    }

    /// OK is refused: a message, and then the sheet again on that page, with the focus there.
    void expectRefusal(const std::string& text, int page, int focus) const {
        editor_.press(IDOK);
        const HWND box = editor_.message();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(SchedulerProcess::textOfBox(box), text);
        SchedulerProcess::press(box, IDOK);
        ASSERT_TRUE(editor_.isMessageClosed());
        EXPECT_EQ(editor_.currentPage(), page);
        EXPECT_TRUE(editor_.focusGoesTo(focus)) << editor_.focused();
    }

    driver::SettableClock clock_;
    EditorDriver editor_{scheduler_};
};

TEST_F(Editor, AddsAnEntryOfEachKindAsFilledIn) {
    startWith({sleeping("C:\\news.kra"), sleeping("C:\\archive.kra")});
    std::int32_t last = 1;
    for (const ScheduleKind kind : allKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        ASSERT_TRUE(editor_.openAdd());
        EXPECT_TRUE(editor_.isChecked(buttonOf(ScheduleKind::AfterProject)));
        EXPECT_EQ(editor_.selected(IDC_AFTER_PROJECT), last) << "a new entry follows the last one";
        ScheduledProject wanted;
        wanted.afterIndex = last;
        wanted = fillIn(kind, wanted);
        const ScheduledProject added = savedByOk(static_cast<std::size_t>(++last));
        if (wanted.time == TimeValue()) {
            EXPECT_EQ(added.time.seconds() / 3600, at(3, 10, 10, 0).seconds() / 3600) << "the time of Add";
            wanted.time = added.time;
        }
        EXPECT_EQ(added, wanted);
    }
}

TEST_F(Editor, EditsEveryFieldOfEachKind) {
    startWithEachKind();
    for (const ScheduleKind kind : allKinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        const std::size_t position = edit(kind);
        EXPECT_EQ(editor_.itemCount(IDC_AFTER_PROJECT), 1 + static_cast<int>(allKinds.size()))
            << "not the entry itself";
        const ScheduledProject wanted = fillIn(kind, entryOf(kind));
        EXPECT_EQ(savedByOk(position), wanted);
    }
}

TEST_F(Editor, SavesWhatTheUserOnlyLookedAtUnchanged) {
    startWithEachKind();
    for (const ScheduleKind kind : allKinds) {
        const std::size_t position = edit(kind);
        editor_.turnTo(IDD_SCHEDULE_PAGE);
        ASSERT_TRUE(editor_.focusGoesTo(buttonOf(kind)));
        editor_.tabStops(); // a field is rewritten when the focus leaves it
        ScheduledProject saved = savedByOk(position);
        saved.nextRun = TimeValue();
        EXPECT_EQ(saved, entryOf(kind)) << static_cast<int>(kind);
    }
}

TEST_F(Editor, CancelChangesNothing) {
    startWithEachKind();
    const auto before = savedSchedule();
    edit(ScheduleKind::Hourly);
    fillIn(ScheduleKind::AtStartup, {});
    editor_.press(IDCANCEL);
    ASSERT_TRUE(editor_.closes());
    EXPECT_EQ(savedSchedule(), before);
    EXPECT_EQ(list().cell(4, 0), "run:backup.exe");
}

TEST_F(Editor, RefusesWhatIsNoProjectAndADailyEntryWithoutADay) {
    startWith({});
    ASSERT_TRUE(editor_.openAdd());
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_NO_FATAL_FAILURE(expectRefusal("You must enter the path to an existing Corvane project file.",
                                          IDD_PROJECT_PAGE, IDC_PROJECT_PATH));
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:"));
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Daily));
    for (int day = IDC_MONDAY; day <= IDC_SUNDAY; ++day)
        editor_.click(day);
    ASSERT_NO_FATAL_FAILURE(
        expectRefusal("You must choose at least one day of the week.", IDD_SCHEDULE_PAGE, IDC_MONDAY));
    EXPECT_THAT(savedSchedule(), SizeIs(0));
    editor_.click(IDC_SATURDAY);
    EXPECT_EQ(savedByOk(0).weekdays, (std::array<std::uint8_t, 7>{0, 0, 0, 0, 0, 1, 0}));
}

TEST_F(Editor, KeepsTheRunThatStartsAndEndsWhileItIsOpen) {
    const driver::SampleSpider spider;
    ScheduledProject entry = entryOf(ScheduleKind::Once);
    entry.path = spider.makeProject("due.kra", spider.untilReleased());
    entry.lastResult = "2 errors";
    startWith({entry, sleeping("C:\\news.kra")});
    list().select({0});
    ASSERT_TRUE(editor_.openEdit());
    clock_.moveTo(entry.time);
    ASSERT_TRUE(waitUntil([&] { return list().cell(0, driver::nextRunColumn) == "Running"; }));
    spider.release();
    ASSERT_TRUE(waitUntil([&] { return list().cell(0, driver::lastRunColumn) != "Never"; }));
    EXPECT_TRUE(editor_.isOpen());
    EXPECT_FALSE(IsWindowEnabled(window()));
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "7"));
    const ScheduledProject edited = savedByOk(0);
    EXPECT_EQ(edited.timeLimitMinutes, 7);
    EXPECT_EQ(edited.running, 0);
    EXPECT_GE(edited.lastRun, entry.time);
    EXPECT_EQ(edited.lastResult, "") << "that of the new run";
}

} // namespace
