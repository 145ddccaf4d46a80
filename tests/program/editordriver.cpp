#include "tests/program/editordriver.h"

#include "resources/ids.h"
#include "tests/support/schedulekinds.h"

#include <prsht.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace driver {
namespace {

constexpr int pageIds[] = {IDD_PROJECT_PAGE, IDD_SCHEDULE_PAGE};

bool isShownDialog(HWND window, const std::string& caption) {
    return window && IsWindowVisible(window) && textOf(window) == caption;
}

} // namespace

bool EditorDriver::open(int command, const char* caption) {
    scheduler_.command(command);
    return waitUntil([&] {
        sheet_ = FindWindowA("#32770", caption);
        return isShownDialog(sheet_, caption) && currentPage() != 0 && scheduler_.focused() != nullptr;
    });
}

bool EditorDriver::openAdd() {
    return open(IDM_ADD, "Add Scheduled Project");
}

bool EditorDriver::openEdit() {
    return open(IDM_EDIT, "Edit Scheduled Task");
}

HWND EditorDriver::item(int id) const {
    for (const int page : pageIds)
        if (const HWND found = GetDlgItem(GetDlgItem(sheet_, page), id))
            return found;
    return nullptr;
}

int EditorDriver::currentPage() const {
    for (const int page : pageIds)
        if (IsWindowVisible(GetDlgItem(sheet_, page)))
            return page;
    return 0;
}

void EditorDriver::turnTo(int page) const {
    const int index = page == IDD_PROJECT_PAGE ? 0 : 1;
    SendMessageA(sheet_, PSM_SETCURSEL, static_cast<WPARAM>(index), 0);
}

bool EditorDriver::isShown(int id) const {
    return (GetWindowLongA(item(id), GWL_STYLE) & WS_VISIBLE) != 0;
}

bool EditorDriver::replace(int id, const std::string& text) const {
    SendMessageA(item(id), EM_SETSEL, 0, -1);
    for (const char key : text)
        PostMessageA(item(id), WM_CHAR, static_cast<unsigned char>(key), 1);
    return waitUntil([&] { return this->text(id) == text; });
}

void EditorDriver::click(int id) const {
    SendMessageA(item(id), BM_CLICK, 0, 0);
}

void EditorDriver::choose(int list, int position) const {
    SendMessageA(item(list), CB_SETCURSEL, static_cast<WPARAM>(position), 0);
    SendMessageA(GetParent(item(list)), WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(item(list)));
}

bool EditorDriver::chooseKind(scheduler::ScheduleKind kind) const {
    const int field = test::controlsOf(kind).fields.back();
    click(test::buttonOf(kind));
    return waitUntil([&] { return isShown(field) && isEnabled(field); });
}

void EditorDriver::press(int button) const {
    PostMessageA(GetDlgItem(sheet_, button), BM_CLICK, 0, 0);
}

void EditorDriver::pressKey(WPARAM key) const {
    const HWND window = scheduler_.focused();
    PostMessageA(window, WM_KEYDOWN, key, 1);
    PostMessageA(window, WM_KEYUP, key, 1);
}

bool EditorDriver::moveFocusTo(int id) const {
    PostMessageA(sheet_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(item(id)), TRUE);
    return waitUntil([&] { return scheduler_.focused() == item(id); });
}

std::vector<HWND> EditorDriver::tabStops() const {
    std::vector<HWND> stops;
    for (HWND stop = scheduler_.focused(); stop && std::ranges::find(stops, stop) == stops.end();
         stop = scheduler_.focused()) {
        stops.push_back(stop);
        pressKey(VK_TAB);
        EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() && scheduler_.focused() != stop; }))
            << GetDlgCtrlID(stop);
    }
    return stops;
}

bool EditorDriver::closes() const {
    return waitUntil([&] { return !isOpen() && IsWindowEnabled(scheduler_.window()); });
}

std::vector<scheduler::ScheduledProject> EditorDriver::saveByOk() const {
    press(IDOK);
    if (!closes())
        return {};
    // Waits until the main window has completed the command.
    SendMessageA(scheduler_.window(), WM_NULL, 0, 0);
    return savedSchedule();
}

} // namespace driver
