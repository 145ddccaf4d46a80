// The fields of the editor in the real program, typed key by key, and what OK does not accept.

#include "resources/ids.h"
#include "tests/program/editortest.h"
#include "tests/support/schedulekinds.h"

using driver::savedSchedule;
using driver::SchedulerProcess;
using driver::TypedKey;
using driver::waitUntil;
using scheduler::ScheduleKind;
using test::allKinds;
using test::shownOnlyWith;

namespace {

class EditorFields : public driver::AddInEditor {
protected:
    void expectOnlyControlsOf(ScheduleKind kind) const {
        // The idle pass shows one control after the other, and is over when the next message is answered.
        SendMessageA(editor_.sheet(), WM_NULL, 0, 0);
        for (const ScheduleKind other : allKinds)
            for (const int id : shownOnlyWith(other)) {
                EXPECT_EQ(editor_.isShown(id), other == kind) << id;
                EXPECT_EQ(editor_.isEnabled(id), other == kind) << id;
            }
        EXPECT_TRUE(editor_.isShown(IDC_AFTER_PROJECT));
        EXPECT_EQ(editor_.isEnabled(IDC_AFTER_PROJECT), kind == ScheduleKind::AfterProject);
        EXPECT_TRUE(editor_.isEnabled(IDC_KIND_AFTER_PROJECT));
    }

    /// The sheet is still open, on that page, with the message that it has just shown gone.
    void expectRefusal(const std::string& text, int page, int focus) const {
        const HWND box = editor_.message();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(SchedulerProcess::textOfBox(box), text);
        SchedulerProcess::press(box, IDOK);
        ASSERT_TRUE(editor_.isMessageClosed());
        EXPECT_TRUE(editor_.isOpen());
        EXPECT_EQ(editor_.currentPage(), page);
        EXPECT_TRUE(focusGoesTo(focus)) << editor_.focused();
        EXPECT_EQ(savedSchedule().size(), 2U);
    }
};

TEST_F(EditorFields, NumbersAreKeptInTheirRangesKeyByKey) {
    struct Typed {
        ScheduleKind kind;
        int id;
        std::vector<TypedKey> keys;
    };
    const Typed typed[] = {
        {ScheduleKind::AfterProject, IDC_AFTER_DELAY, {{'2', "2"}, {'0', "20"}, {'0', "200"}, {'0', "1440"}}},
        {ScheduleKind::AfterProject, IDC_AFTER_DELAY, {{'1', "1"}, {'4', "14"}, {'4', "144"}, {'0', "1440"}}},
        {ScheduleKind::AfterProject, IDC_AFTER_DELAY, {{'1', "1"}, {'4', "14"}, {'4', "144"}, {'1', "1440"}}},
        {ScheduleKind::AfterProject, IDC_AFTER_DELAY, {{'9', "9"}, {'\b', "0"}, {'7', "7"}, {'x', "7"}}},
        {ScheduleKind::AtStartup, IDC_STARTUP_DELAY, {{'1', "1"}, {'4', "14"}, {'3', "143"}, {'9', "1439"}}},
        {ScheduleKind::AtStartup, IDC_STARTUP_DELAY, {{'9', "9"}, {'9', "99"}, {'9', "999"}, {'9', "1440"}}},
        {ScheduleKind::AtStartup, IDC_STARTUP_DELAY, {{'5', "5"}, {'\b', "0"}, {'3', "3"}}},
        {ScheduleKind::Hourly, IDC_HOURLY_MINUTE, {{'5', "5"}, {'9', "59"}, {'1', "59"}}},
        {ScheduleKind::Hourly, IDC_HOURLY_MINUTE, {{'6', "6"}, {'0', "59"}}},
        {ScheduleKind::Hourly, IDC_HOURLY_MINUTE, {{'6', "6"}, {'\b', "0"}, {'4', "4"}, {'8', "48"}}},
        {ScheduleKind::Monthly, IDC_MONTHLY_DAY, {{'3', "3"}, {'1', "31"}}},
        {ScheduleKind::Monthly, IDC_MONTHLY_DAY, {{'3', "3"}, {'2', "31"}}},
        {ScheduleKind::Monthly, IDC_MONTHLY_DAY, {{'0', "1"}, {'2', "2"}, {'8', "28"}}},
        {ScheduleKind::Monthly, IDC_MONTHLY_DAY, {{'5', "5"}, {'\b', "1"}, {'3', "3"}}},
    };
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const Typed& each : typed) {
        ASSERT_TRUE(editor_.chooseKind(each.kind));
        EXPECT_TRUE(editor_.type(each.id, each.keys)) << each.id << " shows " << editor_.text(each.id);
    }
    editor_.turnTo(IDD_PROJECT_PAGE);
    EXPECT_TRUE(
        editor_.type(IDC_TIME_LIMIT, {{'9', "9"}, {'9', "99"}, {'9', "999"}, {'9', "9999"}, {'9', "9999"}}));
    EXPECT_TRUE(editor_.type(IDC_TIME_LIMIT, {{'8', "8"}, {'\b', "0"}, {'6', "6"}}));
}

TEST_F(EditorFields, TheKindsInAllThirtyOrders) {
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind from : allKinds)
        for (const ScheduleKind to : allKinds) {
            if (from == to)
                continue;
            ASSERT_TRUE(editor_.chooseKind(from));
            ASSERT_TRUE(editor_.chooseKind(to));
            expectOnlyControlsOf(to);
        }
}

TEST_F(EditorFields, ATimeOfDayTakesItsNormalFormWhenItIsLeft) {
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const auto& [kind, id] :
         {std::pair{ScheduleKind::Daily, IDC_DAILY_TIME}, {ScheduleKind::Monthly, IDC_MONTHLY_TIME}})
        for (const auto& [typed, shown] : {std::pair{"1930", "7:30 PM"},
                                           {"7:30p", "7:30 PM"},
                                           {"12 am", "12:00 AM"},
                                           {"6", "6:00 AM"},
                                           {"23:59:58", "11:59:58 PM"},
                                           {"", "12:00 AM"}}) {
            ASSERT_TRUE(editor_.chooseKind(kind));
            SendMessageA(editor_.item(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(""));
            ASSERT_TRUE(editor_.replace(id, typed));
            ASSERT_NO_FATAL_FAILURE(moveFocusTo(id));
            editor_.pressKey(VK_TAB);
            EXPECT_TRUE(waitUntil([&, &wanted = shown] { return editor_.text(id) == wanted; }))
                << typed << " becomes " << editor_.text(id);
        }
}

TEST_F(EditorFields, WhatIsNoProjectIsRefused) {
    const std::string message = "You must enter the path to an existing Corvane project file.";
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    editor_.press(IDOK);
    ASSERT_NO_FATAL_FAILURE(expectRefusal(message, IDD_PROJECT_PAGE, IDC_PROJECT_PATH));
    for (const char* text : {"C:\\missing.kra", "Run:backup.exe"}) {
        ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, text));
        editor_.press(IDOK);
        ASSERT_NO_FATAL_FAILURE(expectRefusal(message, IDD_PROJECT_PAGE, IDC_PROJECT_PATH));
    }
    const std::string file = driver::makeTestFolder() + "news.kra";
    driver::writeText(file, "");
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, file));
    EXPECT_EQ(addedByOk().path, file);
}

TEST_F(EditorFields, ACommandLineNeedsNoFile) {
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:"));
    EXPECT_EQ(addedByOk().path, "run:");
}

TEST_F(EditorFields, DailyWithoutADayIsRefusedFromEitherPage) {
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:backup.exe"));
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(editor_.chooseKind(ScheduleKind::Daily));
    for (int day = IDC_MONDAY; day <= IDC_SUNDAY; ++day)
        editor_.click(day);
    for (const int page : {IDD_SCHEDULE_PAGE, IDD_PROJECT_PAGE}) {
        editor_.turnTo(page);
        editor_.press(IDOK);
        ASSERT_NO_FATAL_FAILURE(
            expectRefusal("You must choose at least one day of the week.", IDD_SCHEDULE_PAGE, IDC_MONDAY));
    }
    editor_.click(IDC_SATURDAY);
    EXPECT_EQ(addedByOk().weekdays, (std::array<std::uint8_t, 7>{0, 0, 0, 0, 0, 1, 0}));
}

TEST_F(EditorFields, RelinkingDisablesWhatIsAboutTheConnection) {
    const auto allAre = [&](bool enabled) {
        return waitUntil([&] {
            return editor_.isEnabled(IDC_AUTOCONNECT) == enabled &&
                   editor_.isEnabled(IDC_TIME_LIMIT) == enabled &&
                   editor_.isEnabled(IDC_DISCONNECT) == enabled;
        });
    };
    ASSERT_TRUE(editor_.replace(IDC_PROJECT_PATH, "run:backup.exe"));
    ASSERT_TRUE(editor_.replace(IDC_TIME_LIMIT, "50"));
    editor_.click(IDC_DISCONNECT);
    for (const int command : {2, 0, 2, 1, 2, 3, 2}) {
        editor_.choose(IDC_RUN_COMMAND, command);
        EXPECT_TRUE(allAre(command != 2)) << command;
    }
    const scheduler::ScheduledProject added = addedByOk();
    EXPECT_EQ(added.runCommand, scheduler::RunCommand::RelinkFiles);
    EXPECT_EQ(added.timeLimitMinutes, 50) << "the values stay as they were";
    EXPECT_EQ(added.disconnectWhenDone, 1);
}

} // namespace
