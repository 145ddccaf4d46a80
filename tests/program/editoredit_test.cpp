// Editing entries in the editor of the real program: every field of every kind, and what happens meanwhile.

#include "lib/base/processes.h"
#include "resources/ids.h"
#include "scheduler/model/nextrun.h"
#include "tests/program/editordriver.h"
#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"
#include "tests/support/schedulekinds.h"

#include <functional>
#include <memory>

using base::TimeSpan;
using base::TimeValue;
using driver::EditorDriver;
using driver::ListDriver;
using driver::savedSchedule;
using driver::waitUntil;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

/// Not due for hours, whatever its kind.
ScheduledProject entryOf(ScheduleKind kind) {
    ScheduledProject entry;
    entry.path = "run:backup.exe";
    entry.kind = kind;
    const TimeValue later = TimeValue::now() + TimeSpan::fromMinutes(5 * 60);
    entry.time = TimeValue(later.seconds() / 60 * 60 + 17); // no field shows the seconds
    entry.minutes = kind == ScheduleKind::Hourly ? (TimeValue::now().local().minute + 50) % 60 : 75;
    entry.afterIndex = 1;
    entry.dayOfMonth = 30;
    entry.weekdays = {1, 0, 1, 0, 1, 0, 1};
    entry.timeLimitMinutes = 30;
    entry.disconnectWhenDone = 1;
    entry.dialupEntry = "Office line";
    entry.runCommand = RunCommand::RunUpdateOnly;
    return entry;
}

/// What a user has set: all but what the program computes and records, with times as far as they count.
ScheduledProject userPart(ScheduledProject entry) {
    entry.nextRun = TimeValue();
    entry.runStart = entry.lastRun = entry.waitingSince = TimeValue();
    entry.lastResult.clear();
    entry.running = 0;
    entry.runNumber = 0;
    if (entry.kind == ScheduleKind::Daily || entry.kind == ScheduleKind::Monthly)
        entry.time = TimeValue(scheduler::timeOfDay(entry.time).seconds());
    return entry;
}

class EditByEditor : public driver::ProgramTest {
protected:
    void TearDown() override {
        ProgramTest::TearDown();
        base::runProcessAndWait("taskkill /f /im spider.exe", SW_HIDE, "", INFINITE);
    }

    /// Opens the editor on the first entry; a second one is there for it to wait for.
    void open(const ScheduledProject& entry) {
        start(entry);
        ASSERT_TRUE(editor_.openEdit());
    }

    void start(const ScheduledProject& entry) {
        scheduler_.kill();
        const ScheduledProject other = driver::sleeping("C:\\Sites\\news.kra");
        driver::saveEntries({entry, other, other});
        ASSERT_TRUE(scheduler_.start());
        list_ = std::make_unique<ListDriver>(scheduler_.window());
        list_->select({0});
    }

    ScheduledProject firstSaved() const {
        const auto saved = savedSchedule();
        return saved.size() == 3 ? saved[0] : ScheduledProject();
    }

    bool isShownRunning() const { return list_->cell(0, driver::nextRunColumn) == "Running"; }

    ScheduledProject editedByOk() {
        const auto saved = editor_.saveByOk();
        EXPECT_EQ(saved.size(), 3U);
        return saved.size() == 3 ? saved[0] : ScheduledProject();
    }

    EditorDriver editor_{scheduler_};
    std::unique_ptr<ListDriver> list_;
};

TEST_F(EditByEditor, OpeningAndPressingOkChangesNothing) {
    for (const ScheduleKind kind : test::allKinds) {
        const ScheduledProject before = entryOf(kind);
        ASSERT_NO_FATAL_FAILURE(open(before));
        // Through every field and past every idle pass.
        editor_.turnTo(IDD_SCHEDULE_PAGE);
        for (int stop = 0; stop < 16; ++stop) {
            const HWND from = scheduler_.focused();
            editor_.pressKey(VK_TAB);
            ASSERT_TRUE(waitUntil([&] { return scheduler_.focused() != from; }));
        }
        EXPECT_EQ(userPart(editedByOk()), userPart(before)) << static_cast<int>(kind);
    }
}

TEST_F(EditByEditor, EveryFieldOfTheProjectPage) {
    ScheduledProject wanted = entryOf(ScheduleKind::Hourly);
    ASSERT_NO_FATAL_FAILURE(open(wanted));
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:other.exe /x"));
    editor_.choose(IDC_RUN_COMMAND, 0);
    editor_.choose(IDC_AUTOCONNECT, 0);
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "9999"));
    editor_.click(IDC_DISCONNECT);
    wanted.path = "run:other.exe /x";
    wanted.runCommand = RunCommand::RunNormally;
    wanted.dialupEntry.clear();
    wanted.timeLimitMinutes = 9999;
    wanted.disconnectWhenDone = 0;
    EXPECT_EQ(userPart(editedByOk()), userPart(wanted));
}

TEST_F(EditByEditor, EveryFieldOfEveryKind) {
    const TimeValue onceAt = TimeValue::fromLocal(2037, 12, 31, 23, 59, 0, -1);
    const TimeValue evening = TimeValue::fromLocal(2026, 3, 10, 21, 5, 0, -1);
    struct Change {
        ScheduleKind kind;
        int id;
        const char* text;
        std::function<void(ScheduledProject&)> apply;
    };
    const Change changes[] = {
        {ScheduleKind::AfterProject, IDC_AFTER_DELAY, "1440", [](auto& entry) { entry.minutes = 1440; }},
        {ScheduleKind::AtStartup, IDC_STARTUP_DELAY, "1", [](auto& entry) { entry.minutes = 1; }},
        {ScheduleKind::Hourly, IDC_HOURLY_MINUTE, "0", [](auto& entry) { entry.minutes = 0; }},
        {ScheduleKind::Daily, IDC_DAILY_TIME, "2105", [&](auto& entry) { entry.time = evening; }},
        {ScheduleKind::Monthly, IDC_MONTHLY_DAY, "31", [](auto& entry) { entry.dayOfMonth = 31; }},
        {ScheduleKind::Monthly, IDC_MONTHLY_TIME, "9:05p", [&](auto& entry) { entry.time = evening; }},
        {ScheduleKind::Once, IDC_ONCE_TIME, "12/31/37 11:59 pm", [&](auto& entry) { entry.time = onceAt; }},
    };
    for (const Change& change : changes) {
        ScheduledProject wanted = entryOf(change.kind);
        ASSERT_NO_FATAL_FAILURE(open(wanted));
        editor_.turnTo(IDD_SCHEDULE_PAGE);
        ASSERT_TRUE(editor_.replace(change.id, change.text));
        change.apply(wanted);
        EXPECT_EQ(userPart(editedByOk()), userPart(wanted)) << change.id;
    }
}

TEST_F(EditByEditor, TheProjectToWaitForAndTheDays) {
    ScheduledProject wanted = entryOf(ScheduleKind::AfterProject);
    ASSERT_NO_FATAL_FAILURE(open(wanted));
    EXPECT_EQ(editor_.itemCount(IDC_AFTER_PROJECT), 2) << "not the entry itself";
    EXPECT_EQ(editor_.selected(IDC_AFTER_PROJECT), 0);
    editor_.choose(IDC_AFTER_PROJECT, 1);
    wanted.afterIndex = 2;
    EXPECT_EQ(userPart(editedByOk()), userPart(wanted));

    for (int day = 0; day < 7; ++day) {
        wanted = entryOf(ScheduleKind::Daily);
        ASSERT_NO_FATAL_FAILURE(open(wanted));
        editor_.click(IDC_MONDAY + day);
        auto& flag = wanted.weekdays[static_cast<std::size_t>(day)];
        flag = flag ? 0 : 1;
        EXPECT_EQ(userPart(editedByOk()), userPart(wanted)) << day;
    }
}

TEST_F(EditByEditor, TheNextRunFollowsTheEdit) {
    ASSERT_NO_FATAL_FAILURE(open(entryOf(ScheduleKind::AtStartup)));
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Once));
    ASSERT_TRUE(editor_.replace(IDC_ONCE_TIME, "12/31/37 11:59 pm"));
    EXPECT_EQ(editedByOk().nextRun, TimeValue::fromLocal(2037, 12, 31, 23, 59, 0, -1));
}

TEST_F(EditByEditor, LeavingByButtonEscapeAndCaptionChangesNothing) {
    const std::function<void(const EditorDriver&)> ways[] = {
        [](const EditorDriver& editor) { editor.press(IDCANCEL); },
        [](const EditorDriver& editor) { editor.pressKey(VK_ESCAPE); },
        [](const EditorDriver& editor) { PostMessageA(editor.sheet(), WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    const ScheduledProject before = entryOf(ScheduleKind::Hourly);
    start(before);
    for (const auto& leave : ways) {
        ASSERT_TRUE(editor_.openEdit());
        ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:other.exe"));
        ASSERT_TRUE(editor_.chooseKind(ScheduleKind::AtStartup));
        leave(editor_);
        ASSERT_TRUE(editor_.closes());
        EXPECT_EQ(userPart(firstSaved()), userPart(before));
        EXPECT_EQ(list_->cell(0, 0), "run:backup.exe");
        EXPECT_EQ(scheduler_.focused(), list_->handle());
    }
}

TEST_F(EditByEditor, ADoubleClickEditsAndEnterIsOk) {
    start(entryOf(ScheduleKind::Hourly));
    list_->doubleClickRow(0);
    ASSERT_TRUE(waitUntil([] { return FindWindowA("#32770", "Edit Scheduled Task") != nullptr; }));
    ASSERT_NE(waitForBox(), nullptr);
    SetDlgItemTextA(GetDlgItem(scheduler_.messageBox(), IDD_PROJECT_PAGE), IDC_PROJECT_PATH, "run:enter.exe");
    editor_.pressKey(VK_RETURN);
    EXPECT_TRUE(waitUntil([&] { return firstSaved().path == "run:enter.exe"; }));
    EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() == list_->handle(); }));
}

TEST_F(EditByEditor, AnEntryThatFallsDueWhileTheEditorIsOpenIsStarted) {
    const driver::SampleSpider spider;
    ScheduledProject due;
    due.path = spider.makeProject("due.kra", "ms=100\n");
    due.kind = ScheduleKind::Once;
    // Soon, but not before the editor is there, however slow the machine.
    for (const int seconds : {15, 60, 240}) {
        scheduler_.kill();
        due.time = TimeValue::now() + TimeSpan::fromSeconds(seconds);
        driver::saveEntries({entryOf(ScheduleKind::Hourly), due});
        ASSERT_TRUE(scheduler_.start());
        ListDriver(scheduler_.window()).select({0});
        ASSERT_TRUE(editor_.openEdit());
        if (TimeValue::now() < due.time)
            break;
    }
    ASSERT_LT(TimeValue::now(), due.time);
    const std::size_t before = spider.logged("due.kra");
    EXPECT_TRUE(waitUntil([&] { return spider.logged("due.kra") > before; }, std::chrono::minutes(6)));
    EXPECT_GE(TimeValue::now(), due.time);
    EXPECT_TRUE(editor_.isOpen());
    EXPECT_FALSE(IsWindowEnabled(scheduler_.window()));
}

TEST_F(EditByEditor, ARunThatEndsWhileTheEditorIsOpenIsRecorded) {
    const driver::SampleSpider spider;
    ScheduledProject entry = entryOf(ScheduleKind::Hourly);
    entry.path = spider.makeProject("slow.kra", "seconds=600\n");
    entry.lastResult = "2 errors";
    start(entry);
    scheduler_.command(IDM_RUN);
    ASSERT_TRUE(waitUntil([&] { return isShownRunning() && spider.logged("start run") == 1; }));
    ASSERT_TRUE(editor_.openEdit());
    EXPECT_TRUE(isShownRunning());
    base::runProcessAndWait("taskkill /f /im spider.exe", SW_HIDE, "", INFINITE);
    ASSERT_TRUE(waitUntil([&] { return firstSaved().lastRun != TimeValue(); }));
    const ScheduledProject ended = firstSaved();
    ASSERT_TRUE(editor_.isOpen());
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "7"));
    const ScheduledProject edited = editedByOk();
    EXPECT_EQ(edited.timeLimitMinutes, 7);
    EXPECT_EQ(edited.running, 0);
    EXPECT_EQ(edited.lastRun, ended.lastRun);
    EXPECT_EQ(edited.lastResult, "") << "the new run's, not the one from before it";
}

} // namespace
