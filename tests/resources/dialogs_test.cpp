#include "tests/support/dialogtemplate.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using test::TemplateItem;
using testing::ElementsAreArray;

constexpr DWORD pageStyle = DS_SETFONT | WS_CHILD | WS_DISABLED | WS_CAPTION;
constexpr DWORD popupStyle = DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU;

// Styles of the items.
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

void expectDialog(int id, const std::string& caption, int width, int height, DWORD style,
                  const std::vector<TemplateItem>& items) {
    const test::DialogTemplate dialog = test::readDialogTemplate(id);
    EXPECT_EQ(dialog.caption, caption);
    EXPECT_EQ(dialog.width, width);
    EXPECT_EQ(dialog.height, height);
    EXPECT_EQ(dialog.style, style);
    EXPECT_EQ(dialog.fontSize, 8);
    EXPECT_EQ(dialog.fontName, "MS Sans Serif");
    EXPECT_THAT(dialog.items, ElementsAreArray(items));
}

TEST(Dialogs, TheProjectPageIsLaidOutAsDesigned) {
    expectDialog(136, "Project", 277, 111, pageStyle,
                 {
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
                 });
}

TEST(Dialogs, TheSchedulePageIsLaidOutAsDesigned) {
    expectDialog(132, "Schedule", 277, 111, pageStyle,
                 {
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
                 });
}

TEST(Dialogs, ThePreferencesAreLaidOutAsDesigned) {
    expectDialog(
        138, "Preferences", 263, 94, popupStyle,
        {
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
        });
}

TEST(Dialogs, TheAboutDialogIsLaidOutAsDesigned) {
    expectDialog(
        101, "About the Corvane Scheduler", 286, 62, popupStyle,
        {
            {-1, "static", "#100", 7, 7, 20, 20, SS_ICON | shown},
            {-1, "static", "Corvane Scheduler, version " PACKAGE_VERSION, 40, 7, 239, 26, label | shown},
            {1, "button", "OK", 118, 41, 50, 14, defaultPush | group | shown},
        });
}

} // namespace
