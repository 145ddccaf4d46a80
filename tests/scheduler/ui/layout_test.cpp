// Runs at several resolutions. Every control must have room for its text and be inside its dialog.

#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "resources/ids.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/framework/textextent.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/mainwindow.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/support/schedulekinds.h"
#include "tests/support/windowlooks.h"

#include <windows.h>

#include <commctrl.h>
#include <prsht.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using test::classOf;
using test::placeOf;
using test::press;
using test::styleOf;

bool isGroupBox(HWND window) {
    return test::isButton(window, BS_GROUPBOX);
}

std::vector<HWND> shownIn(HWND dialog) {
    std::vector<HWND> shown;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (styleOf(child) & WS_VISIBLE)
            shown.push_back(child);
    return shown;
}

std::string describe(HWND control) {
    return std::to_string(GetDlgCtrlID(control)) + " \"" + base::windowText(control) + "\"";
}

LONG widthBesideText(HWND button) {
    switch (styleOf(button) & BS_TYPEMASK) {
    case BS_AUTOCHECKBOX:
    case BS_AUTORADIOBUTTON:
        return GetSystemMetrics(SM_CXMENUCHECK) + 2 * GetSystemMetrics(SM_CXEDGE);
    default:
        return 2 * GetSystemMetrics(SM_CXEDGE);
    }
}

void expectRoomForText(HWND control) {
    const bool isText = classOf(control) == "static" && (styleOf(control) & SS_TYPEMASK) == SS_LEFT;
    if (!isText && classOf(control) != "button")
        return;
    const SIZE needed = framework::TextExtent(control).of(base::windowText(control));
    const RECT place = placeOf(control);
    EXPECT_LE(needed.cx + (isText ? 0 : widthBesideText(control)), place.right - place.left)
        << describe(control);
    EXPECT_LE(needed.cy, place.bottom - place.top) << describe(control);
}

/// The height of a list's items does not follow the font automatically.
void expectRoomForItems(HWND list) {
    if (classOf(list) != "combobox")
        return;
    const LONG needed = framework::TextExtent(list).of("Xg").cy;
    constexpr WPARAM shownItem = static_cast<WPARAM>(-1);
    EXPECT_LE(needed, SendMessageA(list, CB_GETITEMHEIGHT, shownItem, 0)) << describe(list);
    EXPECT_LE(needed, SendMessageA(list, CB_GETITEMHEIGHT, 0, 0)) << describe(list);
}

void expectRoomForAll(HWND dialog) {
    RECT room{};
    GetClientRect(dialog, &room);
    MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&room), 2);
    const std::vector<HWND> shown = shownIn(dialog);
    EXPECT_FALSE(shown.empty());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const RECT place = placeOf(shown[i]);
        RECT common{};
        EXPECT_TRUE(IntersectRect(&common, &place, &room) && EqualRect(&common, &place))
            << describe(shown[i]);
        expectRoomForText(shown[i]);
        expectRoomForItems(shown[i]);
        for (std::size_t j = i + 1; j < shown.size(); ++j) {
            const RECT other = placeOf(shown[j]);
            const bool isApart =
                isGroupBox(shown[i]) || isGroupBox(shown[j]) || !IntersectRect(&common, &place, &other);
            EXPECT_TRUE(isApart) << describe(shown[i]) << " covers " << describe(shown[j]);
        }
    }
}

TEST(Layout, TheEditorsControlsFitForEachKind) {
    scheduler::ScheduleList schedule;
    schedule.append({});
    const test::WhileOpen user([](HWND sheet) {
        expectRoomForAll(GetDlgItem(sheet, IDD_PROJECT_PAGE));
        SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
        const HWND page = GetDlgItem(sheet, IDD_SCHEDULE_PAGE);
        for (const scheduler::ScheduleKind kind : test::allKinds) {
            SCOPED_TRACE(static_cast<int>(kind));
            press(page, test::buttonOf(kind));
            framework::Window::of(sheet)->onIdle();
            expectRoomForAll(page);
        }
        press(sheet, IDCANCEL);
    });
    EXPECT_FALSE(scheduler::editEntry(nullptr, {}, schedule, std::nullopt, base::systemClock()));
}

TEST(Layout, TheListsColumnsFillTheWindowWithoutScrolling) {
    base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    const HWND list = GetDlgItem(window.handle(), IDC_SCHEDULE_LIST);
    RECT client{};
    GetClientRect(window.handle(), &client);
    const int room = client.right - GetSystemMetrics(SM_CXVSCROLL);
    int widths = 0;
    for (int column = 0; column < static_cast<int>(scheduler::columnCount); ++column)
        widths += ListView_GetColumnWidth(list, column);
    EXPECT_LE(widths, room);
    EXPECT_GT(widths, room * 9 / 10);
    for (const int width : {400, 700}) {
        SetWindowPos(window.handle(), nullptr, 10, 10, width, 300, SWP_NOZORDER);
        GetClientRect(window.handle(), &client);
        EXPECT_EQ(placeOf(list).right - placeOf(list).left, client.right);
        EXPECT_EQ(placeOf(list).bottom - placeOf(list).top, client.bottom);
    }
}

TEST(Layout, ThePreferencesControlsFit) {
    scheduler::Preferences preferences;
    const test::WhileOpen user([](HWND dialog) {
        expectRoomForAll(dialog);
        press(dialog, IDCANCEL);
    });
    EXPECT_FALSE(scheduler::editPreferences(nullptr, preferences));
}

TEST(Layout, TheAboutDialogsControlsFit) {
    const test::WhileOpen user([](HWND dialog) {
        expectRoomForAll(dialog);
        EXPECT_EQ(base::windowText(dialog), "About the Corvane Scheduler");
        EXPECT_NE(SendMessageA(GetWindow(dialog, GW_CHILD), STM_GETICON, 0, 0), 0);
        press(dialog, IDOK);
    });
    scheduler::showAbout(nullptr);
}

} // namespace
