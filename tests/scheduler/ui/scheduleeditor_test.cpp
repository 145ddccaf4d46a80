#include "lib/base/opsys.h"
#include "resources/ids.h"
#include "scheduler/run/dialupconnector.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/framework/browselayout.h"
#include "scheduler/ui/framework/filedialog.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/scheduleeditor.h"
#include "tests/scheduler/ui/framework/drawnitem.h"
#include "tests/scheduler/ui/whileopen.h"
#include "tests/support/filledentry.h"

#include <windows.h>

#include <prsht.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace {

std::string answer; // of the Browse dialog
DWORD askedFlags = 0;
std::string askedFilter;

} // namespace

// Stands in for the platform's dialog.
namespace framework {

bool openFileDialog(OPENFILENAMEA& request) {
    askedFlags = request.Flags;
    askedFilter.assign(request.lpstrFilter, 98);
    answer.copy(request.lpstrFile, request.nMaxFile);
    request.lpstrFile[answer.size()] = '\0';
    return !answer.empty();
}

DWORD fileDialogError() {
    return 0;
}

} // namespace framework

// Stands in for the connector that asks the platform: its phone book has two entries.
namespace scheduler {

DialupConnector::DialupConnector(HMODULE, const FindEntryPoint&)
    : available_(true), entries_({"Home", "Office line"}) {}

const DialupConnector& DialupConnector::instance() {
    static const DialupConnector connector(nullptr, nullptr);
    return connector;
}

} // namespace scheduler

namespace {

using namespace std::string_literals;
using scheduler::EditedEntry;
using scheduler::ScheduledProject;
using testing::ElementsAre;
using testing::IsEmpty;

/// The sheet's page, made whether or not it was turned to.
HWND pageOf(HWND sheet, int templateId) {
    return GetDlgItem(sheet, templateId);
}

void press(HWND sheet, int button) {
    SendDlgItemMessageA(sheet, button, BM_CLICK, 0, 0);
}

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

TEST_F(ScheduleEditor, ItsCaptionTellsAddingFromEditing) {
    schedule.append(record);
    for (const auto& [position, caption] :
         {std::pair{std::optional<std::size_t>(), "Add Scheduled Project"}, {0, "Edit Scheduled Task"}}) {
        std::string shown;
        edit(position, [&](HWND sheet) {
            shown = base::windowText(sheet);
            press(sheet, IDCANCEL);
        });
        EXPECT_EQ(shown, caption);
    }
}

TEST_F(ScheduleEditor, HasTheProjectPageFirstAndTheScheduleBehindIt) {
    edit(std::nullopt, [&](HWND sheet) {
        const HWND project = pageOf(sheet, 136);
        const HWND timing = pageOf(sheet, 132);
        EXPECT_EQ(SendMessageA(sheet, PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(project), 0), 0);
        EXPECT_EQ(SendMessageA(sheet, PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(timing), 0), 1);
        EXPECT_EQ(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0), reinterpret_cast<LRESULT>(project));
        press(sheet, IDCANCEL);
    });
}

TEST_F(ScheduleEditor, OffersAnyOpenConnectionInGrayAndThenThePhoneBook) {
    const COLORREF gray = GetSysColor(COLOR_GRAYTEXT);
    const COLORREF normal = GetSysColor(COLOR_WINDOWTEXT);
    ASSERT_NE(gray, normal);
    edit(std::nullopt, [&](HWND sheet) {
        const HWND list = GetDlgItem(pageOf(sheet, 136), IDC_AUTOCONNECT);
        std::vector<std::string> texts;
        for (int item = 0; item < SendMessageA(list, CB_GETCOUNT, 0, 0); ++item) {
            std::array<char, 256> text{};
            SendMessageA(list, CB_GETLBTEXT, static_cast<WPARAM>(item),
                         reinterpret_cast<LPARAM>(text.data()));
            texts.emplace_back(text.data());
            test::DrawnItem drawn;
            drawn.draw(list, item, 0);
            EXPECT_EQ(drawn.has(gray), item == 0) << texts.back();
            EXPECT_EQ(drawn.has(normal), item != 0) << texts.back();
        }
        EXPECT_THAT(texts, ElementsAre("(any open connection)", "Home", "Office line"));
        press(sheet, IDCANCEL);
    });
}

TEST_F(ScheduleEditor, ItsOwnerIsDisabledWhileItIsOpen) {
    framework::Window owner;
    framework::WindowClass windowClass;
    framework::WindowParameters parameters;
    parameters.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
    ASSERT_TRUE(owner.create(windowClass, parameters));
    const test::WhileOpen user([&](HWND sheet) {
        EXPECT_EQ(GetWindow(sheet, GW_OWNER), owner.handle());
        EXPECT_FALSE(IsWindowEnabled(owner.handle()));
        press(sheet, IDCANCEL);
    });
    scheduler::editEntry(owner.handle(), record, schedule, std::nullopt, base::systemClock());
    EXPECT_TRUE(IsWindowEnabled(owner.handle()));
}

TEST_F(ScheduleEditor, OkGivesTheRecordWithWhatWasChangedOnBothPages) {
    record.path = "run:backup.exe";
    const auto edited = edit(std::nullopt, [&](HWND sheet) {
        SetDlgItemTextA(pageOf(sheet, 136), IDC_PROJECT_PATH, "run:other.exe");
        SetDlgItemTextA(pageOf(sheet, 132), IDC_MONTHLY_DAY, "15");
        press(sheet, IDOK);
    });
    ASSERT_TRUE(edited);
    EXPECT_EQ(edited->record.path, "run:other.exe");
    EXPECT_EQ(edited->record.dayOfMonth, 15);
    EXPECT_EQ(edited->record.lastResult, record.lastResult);
    EXPECT_THAT(edited->files, IsEmpty());
}

TEST_F(ScheduleEditor, CancelGivesNothing) {
    for (const auto& leave : {+[](HWND sheet) { press(sheet, IDCANCEL); },
                              +[](HWND sheet) { SendMessageA(sheet, WM_SYSCOMMAND, SC_CLOSE, 0); }})
        EXPECT_FALSE(edit(std::nullopt, [&](HWND sheet) {
            SetDlgItemTextA(pageOf(sheet, 136), IDC_PROJECT_PATH, "run:other.exe");
            leave(sheet);
        }));
}

TEST_F(ScheduleEditor, SeveralFilesCanBeChosenForANewEntryOnly) {
    schedule.append(record);
    for (const bool isNew : {true, false}) {
        answer = "C:\\Sites\0a.kra\0b.kra\0"s;
        const auto edited = edit(isNew ? std::nullopt : std::optional<std::size_t>(0), [&](HWND sheet) {
            press(pageOf(sheet, 136), framework::browseButtonIdOf(IDC_PROJECT_PATH));
            press(sheet, IDOK);
        });
        EXPECT_EQ((askedFlags & OFN_ALLOWMULTISELECT) != 0, isNew);
        constexpr DWORD always = OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_EXPLORER;
        EXPECT_EQ(askedFlags & always, always);
        ASSERT_TRUE(edited);
        EXPECT_EQ(edited->record.path, "\"C:\\Sites\\a.kra\" \"C:\\Sites\\b.kra\"");
        EXPECT_THAT(edited->files, ElementsAre("C:\\Sites\\a.kra", "b.kra"));
    }
}

TEST_F(ScheduleEditor, FilesStayChosenWhileTheTextBeginsWithAQuote) {
    for (const auto& [text, staysChosen] :
         {std::pair{"\"C:\\Sites\\a.kra\"", true}, {"\"", true}, {"\"\" ", true}, {"run:\"a\"", false}}) {
        answer = "C:\\Sites\0a.kra\0b.kra\0"s;
        const auto edited = edit(std::nullopt, [&, text = text](HWND sheet) {
            press(pageOf(sheet, 136), framework::browseButtonIdOf(IDC_PROJECT_PATH));
            SetDlgItemTextA(pageOf(sheet, 136), IDC_PROJECT_PATH, ""); // as when all of it is typed again
            SetDlgItemTextA(pageOf(sheet, 136), IDC_PROJECT_PATH, text);
            press(sheet, IDOK);
        });
        ASSERT_TRUE(edited);
        EXPECT_EQ(edited->record.path, text);
        EXPECT_EQ(edited->files.size(), staysChosen ? 2U : 0U) << text;
    }
}

TEST_F(ScheduleEditor, TheNextBrowseReplacesTheChosenFiles) {
    const auto edited = edit(std::nullopt, [&](HWND sheet) {
        for (const std::string& next : {"C:\\Sites\0a.kra\0b.kra\0"s, "C:\\Shops\0c.kra\0d.kra\0e.kra\0"s}) {
            answer = next;
            press(pageOf(sheet, 136), framework::browseButtonIdOf(IDC_PROJECT_PATH));
        }
        press(sheet, IDOK);
    });
    ASSERT_TRUE(edited);
    EXPECT_THAT(edited->files, ElementsAre("C:\\Shops\\c.kra", "d.kra", "e.kra"));
}

TEST_F(ScheduleEditor, TheBrowseDialogIsForProjectsFirst) {
    answer.clear();
    edit(std::nullopt, [&](HWND sheet) {
        press(pageOf(sheet, 136), framework::browseButtonIdOf(IDC_PROJECT_PATH));
        press(sheet, IDCANCEL);
    });
    EXPECT_THAT(askedFilter, testing::StartsWith("Corvane Projects (.kra;.krb;.krc)\0*.kra;*.krb;*.krc\0"
                                                 "All Files (*.*)\0*.*\0\0"s));
}

TEST_F(ScheduleEditor, ASheetThatIsCancelledLeavesTheRecordAsItWas) {
    ScheduledProject edited = record;
    scheduler::ScheduleEditor editor(edited, schedule, std::nullopt, base::systemClock());
    const test::WhileOpen user([](HWND sheet) {
        SetDlgItemTextA(pageOf(sheet, 136), IDC_PROJECT_PATH, "run:other.exe");
        press(sheet, IDCANCEL);
    });
    EXPECT_EQ(editor.run("Edit Scheduled Task", nullptr), 2);
    EXPECT_EQ(edited, record);
}

} // namespace
