#include "lib/base/opsys.h"
#include "scheduler/ui/dialogs.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/support/filledentry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using scheduler::EditedEntry;
using scheduler::ScheduledProject;
using test::press;
using test::projectPageOf;
using test::schedulePageOf;
using testing::ElementsAre;
using testing::IsEmpty;

class ScheduleEditor : public testing::Test {
protected:
    std::optional<EditedEntry> edit(std::optional<std::size_t> position,
                                    const std::function<void(HWND sheet)>& act) {
        const test::WhileOpen user(act);
        return scheduler::editEntry(nullptr, record, schedule, position, base::systemClock());
    }

    scheduler::ScheduleList schedule;
    ScheduledProject record = test::filledEntry();
};

TEST_F(ScheduleEditor, ShowsTheProjectPageFirstAndACaptionForAddingOrEditing) {
    schedule.append(record);
    for (const auto& [position, caption] :
         {std::pair{std::optional<std::size_t>(), "Add Scheduled Project"}, {0, "Edit Scheduled Task"}})
        EXPECT_FALSE(edit(position, [&, caption = caption](HWND sheet) {
            EXPECT_EQ(base::windowText(sheet), caption);
            const auto project = reinterpret_cast<LRESULT>(projectPageOf(sheet));
            const auto timing = reinterpret_cast<WPARAM>(schedulePageOf(sheet));
            EXPECT_EQ(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0), project);
            EXPECT_EQ(SendMessageA(sheet, PSM_HWNDTOINDEX, static_cast<WPARAM>(project), 0), 0);
            EXPECT_EQ(SendMessageA(sheet, PSM_HWNDTOINDEX, timing, 0), 1);
            EXPECT_THAT(test::itemTexts(GetDlgItem(projectPageOf(sheet), IDC_AUTOCONNECT)),
                        ElementsAre("(any open connection)", "Home", "Office line"));
            press(sheet, IDCANCEL);
        }));
}

TEST_F(ScheduleEditor, OkReturnsTheRecordWithTheChangesOfBothPages) {
    const auto edited = edit(std::nullopt, [&](HWND sheet) {
        test::setPath(sheet, "run:other.exe");
        SetDlgItemTextA(schedulePageOf(sheet), IDC_MONTHLY_DAY, "15");
        press(sheet, IDOK);
    });
    ASSERT_TRUE(edited);
    EXPECT_EQ(edited->record.path, "run:other.exe");
    EXPECT_EQ(edited->record.dayOfMonth, 15);
    EXPECT_EQ(edited->record.lastResult, "2 errors");
    EXPECT_THAT(edited->files, IsEmpty());
}

TEST_F(ScheduleEditor, OnlyANewEntryAllowsSeveralFiles) {
    schedule.append(record);
    for (const bool isNew : {true, false}) {
        const auto edited = edit(isNew ? std::nullopt : std::optional<std::size_t>(0), [&](HWND sheet) {
            test::browseDialog = [&](const OPENFILENAMEA& request) {
                EXPECT_EQ((request.Flags & OFN_ALLOWMULTISELECT) != 0, isNew);
                constexpr DWORD always =
                    OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_EXPLORER;
                EXPECT_EQ(request.Flags & always, always);
                EXPECT_THAT(std::string(request.lpstrFilter, 98),
                            testing::StartsWith("Corvane Projects (.kra;.krb;.krc)\0*.kra;*.krb;*.krc\0"
                                                "All Files (*.*)\0*.*\0\0"s));
                return false;
            };
            press(projectPageOf(sheet), framework::browseButtonIdOf(IDC_PROJECT_PATH));
            test::browse(sheet, "C:\\Shops\0c.kra\0d.kra\0e.kra\0"s);
            test::browse(sheet, "C:\\Sites\0a.kra\0b.kra\0"s);
            press(sheet, IDOK);
        });
        ASSERT_TRUE(edited);
        EXPECT_EQ(edited->record.path, "\"C:\\Sites\\a.kra\" \"C:\\Sites\\b.kra\"");
        EXPECT_THAT(edited->files, ElementsAre("C:\\Sites\\a.kra", "b.kra"));
    }
}

TEST_F(ScheduleEditor, FilesStayChosenWhileTheTextBeginsWithAQuote) {
    for (const auto& [text, staysChosen] :
         {std::pair{"\"C:\\Sites\\a.kra\"", true}, {"\"", true}, {"\"\" ", true}, {"run:\"a\"", false}}) {
        const auto edited = edit(std::nullopt, [&, text = text](HWND sheet) {
            test::browse(sheet, "C:\\Sites\0a.kra\0b.kra\0"s);
            test::setPath(sheet, ""); // as when the whole text is retyped
            test::setPath(sheet, text);
            press(sheet, IDOK);
        });
        ASSERT_TRUE(edited);
        EXPECT_EQ(edited->record.path, text);
        EXPECT_EQ(edited->files.size(), staysChosen ? 2U : 0U) << text;
    }
}

} // namespace
