#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "tests/support/dialogtemplate.h"
#include "tests/support/schedulekinds.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using scheduler::ScheduleKind;
using test::buttonOf;
using test::DialogTemplate;
using test::readDialogTemplate;
using test::TemplateItem;
using testing::ElementsAre;
using testing::ElementsAreArray;

// Styles of what the templates hold.
constexpr DWORD hidden = 0;
constexpr DWORD shown = WS_VISIBLE;
constexpr DWORD group = WS_GROUP;
constexpr DWORD tab = WS_TABSTOP;
constexpr DWORD label = SS_LEFT | WS_GROUP;
constexpr DWORD line = SS_ETCHEDHORZ;
constexpr DWORD edit = ES_LEFT | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
constexpr DWORD digits = edit | ES_NUMBER;
constexpr DWORD list = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP;
constexpr DWORD check = BS_AUTOCHECKBOX | WS_TABSTOP;
constexpr DWORD radio = BS_AUTORADIOBUTTON;
constexpr DWORD push = BS_PUSHBUTTON | WS_TABSTOP;
constexpr DWORD defaultPush = BS_DEFPUSHBUTTON | WS_TABSTOP;

TEST(Dialogs, ProjectPage) {
    const DialogTemplate page = readDialogTemplate(136);
    EXPECT_EQ(page.caption, "Project");
    EXPECT_THAT(page.items, ElementsAreArray<TemplateItem>({
                                {-1, "static", "&Project:", 7, 10, 25, 8, label | shown},
                                {136, "edit", "", 35, 8, 235, 12, edit | shown},
                                {-1, "static", "", 7, 29, 263, 1, line | shown},
                                {-1, "static", "Parameters:", 7, 32, 38, 8, label | shown},
                                {-1, "static", "&Run command:", 20, 47, 49, 8, label | shown},
                                {137, "combobox", "", 73, 44, 161, 61, list | shown},
                                {1051, "static", "&Autoconnect using:", 7, 63, 62, 8, label | shown},
                                {1041, "combobox", "", 73, 61, 161, 53, list | shown},
                                {1049, "static", "&Time limit:", 37, 81, 32, 8, label | shown},
                                {1044, "edit", "", 73, 79, 28, 12, digits | shown},
                                {1050, "static", "minutes (zero = no limit)", 106, 81, 74, 8, label | shown},
                                {1042, "button", "&Disconnect when finished", 73, 95, 97, 10, check | shown},
                            }));
}

TEST(Dialogs, SchedulePage) {
    const DialogTemplate page = readDialogTemplate(132);
    EXPECT_EQ(page.caption, "Schedule");
    EXPECT_THAT(page.items,
                ElementsAreArray<TemplateItem>({
                    {-1, "static", "Run this project...", 7, 7, 56, 8, label | shown},
                    {1000, "button", "&When", 15, 20, 35, 10, radio | group | tab | shown},
                    {1001, "button", "At operating system &startup", 15, 34, 98, 11, radio | shown},
                    {1002, "button", "&Hourly", 15, 48, 33, 12, radio | shown},
                    {1003, "button", "&Daily", 15, 64, 29, 11, radio | shown},
                    {1004, "button", "&Monthly", 15, 77, 38, 13, radio | shown},
                    {1005, "button", "&Just once", 15, 92, 44, 10, radio | shown},
                    {-1, "static", "is finished", 127, 21, 32, 8, label | shown},
                    {1018, "combobox", "", 51, 18, 72, 59, list | shown},
                    {1023, "static", "(&after a delay of", 162, 21, 50, 8, label | hidden},
                    {1028, "edit", "", 214, 19, 26, 12, digits | hidden},
                    {1025, "static", "minutes)", 243, 21, 27, 8, label | hidden},
                    {1034, "static", "(&after a delay of", 116, 35, 50, 8, label | hidden},
                    {1027, "edit", "", 168, 34, 26, 12, digits | hidden},
                    {1029, "static", "minutes)", 197, 35, 27, 8, label | hidden},
                    {1033, "static", "&at", 50, 50, 8, 8, label | hidden},
                    {1015, "edit", "", 59, 48, 26, 12, digits | hidden},
                    {1030, "static", "minutes after the hour", 87, 50, 69, 8, label | hidden},
                    {1035, "static", "&at", 45, 65, 8, 8, label | hidden},
                    {1019, "edit", "", 54, 63, 43, 12, edit | hidden},
                    {1031, "static", "on", 100, 65, 9, 8, label | hidden},
                    {1006, "button", "Monday", 115, 64, 41, 10, check | group | hidden},
                    {1007, "button", "Tuesday", 115, 75, 43, 10, check | hidden},
                    {1008, "button", "Wednesday", 115, 87, 54, 10, check | hidden},
                    {1009, "button", "Thursday", 166, 64, 45, 10, check | hidden},
                    {1010, "button", "Friday", 166, 75, 35, 10, check | hidden},
                    {1011, "button", "Saturday", 221, 64, 44, 10, check | hidden},
                    {1012, "button", "Sunday", 221, 75, 40, 10, check | hidden},
                    {1036, "static", "&on day", 55, 79, 22, 8, label | hidden},
                    {1022, "edit", "", 80, 77, 26, 12, digits | hidden},
                    {1032, "static", "&at", 109, 79, 8, 8, label | hidden},
                    {1024, "edit", "", 120, 77, 43, 12, edit | hidden},
                    {1037, "static", "&at", 61, 93, 8, 8, label | hidden},
                    {1026, "edit", "", 71, 91, 90, 12, edit | hidden},
                }));
}

TEST(Dialogs, Preferences) {
    const DialogTemplate dialog = readDialogTemplate(138);
    EXPECT_EQ(dialog.width, 263);
    EXPECT_EQ(dialog.height, 94);
    EXPECT_EQ(dialog.caption, "Preferences");
    EXPECT_THAT(
        dialog.items,
        ElementsAreArray<TemplateItem>({
            {1060, "button", "Launch automatically when computer is started", 7, 7, 163, 10, check | shown},
            {-1, "button", "When two scheduled projects would run at the same time:", 7, 25, 249, 45,
             BS_GROUPBOX | shown},
            {1000, "button", "&Wait up to", 21, 40, 47, 10, radio | group | tab | shown},
            {1001, "button", "&Launch a new Corvane webspider to run the second project", 21, 55, 228, 10,
             radio | shown},
            {-1, "static", "minutes for the first project to end", 104, 40, 146, 8, label | shown},
            {1052, "edit", "", 69, 40, 30, 12, digits | shown},
            {1, "button", "OK", 73, 73, 50, 14, defaultPush | group | shown},
            {2, "button", "Cancel", 139, 73, 50, 14, push | shown},
        }));
}

TEST(Dialogs, About) {
    const DialogTemplate dialog = readDialogTemplate(101);
    EXPECT_EQ(dialog.width, 286);
    EXPECT_EQ(dialog.height, 62);
    EXPECT_EQ(dialog.caption, "About the Corvane Scheduler");
    EXPECT_THAT(dialog.items,
                ElementsAreArray<TemplateItem>({
                    {-1, "static", "#100", 7, 7, 20, 20, SS_ICON | shown},
                    {-1, "static", "Corvane Scheduler, version 1.34", 40, 7, 239, 26, label | shown},
                    {1, "button", "OK", 118, 41, 50, 14, defaultPush | group | shown},
                }));
}

TEST(Dialogs, PagesAreChildrenOfOneSize) {
    for (const int id : {IDD_PROJECT_PAGE, IDD_SCHEDULE_PAGE}) {
        const DialogTemplate page = readDialogTemplate(id);
        EXPECT_EQ(page.width, 277) << id;
        EXPECT_EQ(page.height, 111) << id;
        EXPECT_EQ(page.style, DS_SETFONT | WS_CHILD | WS_DISABLED | WS_CAPTION) << id;
    }
}

TEST(Dialogs, PopupsAreCentredByTheSystemAndCanBeClosed) {
    for (const int id : {IDD_PREFERENCES, IDD_ABOUT}) {
        EXPECT_EQ(readDialogTemplate(id).style,
                  DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU)
            << id;
    }
}

class EachDialog : public testing::TestWithParam<int> {
protected:
    const DialogTemplate dialog_ = readDialogTemplate(GetParam());
};

TEST_P(EachDialog, IsSetInMsSansSerif) {
    EXPECT_EQ(dialog_.fontSize, 8);
    EXPECT_EQ(dialog_.fontName, "MS Sans Serif");
}

TEST_P(EachDialog, HasEachLabelWithAnAccessKeyDirectlyBeforeItsControl) {
    const auto& items = dialog_.items;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].kind == "static" && items[i].text.find('&') != std::string::npos) {
            ASSERT_LT(i + 1, items.size()) << items[i];
            EXPECT_TRUE(items[i + 1].style & WS_TABSTOP) << items[i];
            EXPECT_LT(std::abs(items[i + 1].y - items[i].y), 4) << items[i];
            EXPECT_GE(items[i + 1].x, items[i].x + items[i].width) << items[i];
        }
    }
}

TEST_P(EachDialog, HasItsRadioButtonsInOneGroupThatEndsWithThem) {
    const auto& items = dialog_.items;
    const auto isRadio = [](const TemplateItem& item) {
        return item.kind == "button" && (item.style & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
    };
    const auto first = std::find_if(items.begin(), items.end(), isRadio);
    const auto end = std::find_if_not(first, items.end(), isRadio);
    EXPECT_TRUE(std::none_of(end, items.end(), isRadio));
    if (first != items.end()) {
        EXPECT_TRUE(first->style & WS_GROUP);
        EXPECT_TRUE(std::none_of(first + 1, end, [](const auto& item) { return item.style & WS_GROUP; }));
        ASSERT_NE(end, items.end());
        EXPECT_TRUE(end->style & WS_GROUP);
    }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, EachDialog,
                         testing::Values(IDD_PROJECT_PAGE, IDD_SCHEDULE_PAGE, IDD_PREFERENCES, IDD_ABOUT));

// A dialog made of its template, in an unseen window of its own where it is a page.
class LiveDialog : public testing::Test {
protected:
    ~LiveDialog() override {
        if (frame_) {
            DestroyWindow(frame_);
        }
    }

    HWND create(int id) {
        frame_ = CreateWindowExA(WS_EX_CONTROLPARENT, "static", "", WS_POPUP | WS_VISIBLE, 0, 0, 500, 300,
                                 nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
        HWND dialog = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), frame_, ignore, 0);
        EXPECT_TRUE(dialog) << id;
        EnableWindow(dialog, TRUE);
        ShowWindow(dialog, SW_SHOWNA);
        return dialog;
    }

    // Where the Tab key goes from a control on, until it comes back.
    static std::vector<int> tabOrder(HWND dialog, int from) { return walk(dialog, from, GetNextDlgTabItem); }

    // Where the arrow keys go from a control on, until they come back.
    static std::vector<int> arrowOrder(HWND dialog, int from) {
        return walk(dialog, from, GetNextDlgGroupItem);
    }

private:
    using Next = HWND(WINAPI*)(HWND dialog, HWND control, BOOL backwards);

    static std::vector<int> walk(HWND dialog, int from, Next next) {
        constexpr std::size_t manyControls = 100; // a walk that never comes back ends here
        std::vector<int> ids;
        HWND start = GetDlgItem(dialog, from);
        HWND control = start;
        do {
            ids.push_back(GetDlgCtrlID(control));
            control = next(dialog, control, FALSE);
        } while (control && control != start && ids.size() < manyControls);
        return ids;
    }

    CALLED_BY_PLATFORM static INT_PTR CALLBACK ignore(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

    HWND frame_ = nullptr;
};

TEST_F(LiveDialog, TabGoesThroughTheProjectPageFromTopToBottom) {
    HWND page = create(IDD_PROJECT_PAGE);
    EXPECT_THAT(
        tabOrder(page, IDC_PROJECT_PATH),
        ElementsAre(IDC_PROJECT_PATH, IDC_RUN_COMMAND, IDC_AUTOCONNECT, IDC_TIME_LIMIT, IDC_DISCONNECT));
}

TEST_F(LiveDialog, TabGoesThroughADailyScheduleInReadingOrder) {
    HWND page = create(IDD_SCHEDULE_PAGE);
    for (const int id : {IDC_DAILY_TIME_LABEL, IDC_DAILY_TIME, IDC_DAILY_ON, IDC_MONDAY, IDC_TUESDAY,
                         IDC_WEDNESDAY, IDC_THURSDAY, IDC_FRIDAY, IDC_SATURDAY, IDC_SUNDAY}) {
        ShowWindow(GetDlgItem(page, id), SW_SHOWNA);
    }
    EnableWindow(GetDlgItem(page, IDC_AFTER_PROJECT), FALSE);
    EXPECT_THAT(tabOrder(page, IDC_KIND_AFTER_PROJECT),
                ElementsAre(IDC_KIND_AFTER_PROJECT, IDC_DAILY_TIME, IDC_MONDAY, IDC_TUESDAY, IDC_WEDNESDAY,
                            IDC_THURSDAY, IDC_FRIDAY, IDC_SATURDAY, IDC_SUNDAY));
    EXPECT_THAT(arrowOrder(page, IDC_MONDAY),
                ElementsAre(IDC_MONDAY, IDC_TUESDAY, IDC_WEDNESDAY, IDC_THURSDAY, IDC_FRIDAY, IDC_SATURDAY,
                            IDC_SUNDAY));
}

TEST_F(LiveDialog, ArrowsGoThroughTheKindsAndStayAmongThem) {
    HWND page = create(IDD_SCHEDULE_PAGE);
    EXPECT_THAT(arrowOrder(page, IDC_KIND_AFTER_PROJECT),
                ElementsAre(IDC_KIND_AFTER_PROJECT, IDC_KIND_STARTUP, IDC_KIND_HOURLY, IDC_KIND_DAILY,
                            IDC_KIND_MONTHLY, IDC_KIND_ONCE));
}

TEST_F(LiveDialog, TabStopsOnceAmongTheRadioButtonsOfThePreferences) {
    HWND dialog = create(IDD_PREFERENCES);
    EXPECT_THAT(tabOrder(dialog, IDC_AUTOSTART),
                ElementsAre(IDC_AUTOSTART, IDC_WAIT_FOR_FIRST, IDC_WAIT_TIME, IDOK, IDCANCEL));
    EXPECT_THAT(arrowOrder(dialog, IDC_WAIT_FOR_FIRST),
                ElementsAre(IDC_WAIT_FOR_FIRST, IDC_RUN_BESIDE_FIRST));
}

TEST_F(LiveDialog, RadioButtonsExcludeEachOther) {
    HWND page = create(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind chosen : test::allKinds) {
        SendDlgItemMessageA(page, buttonOf(chosen), BM_CLICK, 0, 0);
        for (const ScheduleKind kind : test::allKinds)
            EXPECT_EQ(IsDlgButtonChecked(page, buttonOf(kind)) == BST_CHECKED, kind == chosen)
                << buttonOf(kind) << " of " << buttonOf(chosen);
    }
}

TEST_F(LiveDialog, AboutShowsTheProgramsIcon) {
    HWND dialog = create(IDD_ABOUT);
    HWND icon = GetWindow(dialog, GW_CHILD);
    EXPECT_NE(SendMessageA(icon, STM_GETICON, 0, 0), 0);
}

} // namespace
