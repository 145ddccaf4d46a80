// The schedule editor of a running copy, worked as its user does.
#pragma once

#include "tests/program/scheduledriver.h"

#include <windows.h>

#include <string>
#include <vector>

namespace driver {

class EditorDriver {
public:
    explicit EditorDriver(const SchedulerProcess& scheduler) : scheduler_(scheduler) {}

    // Open the sheet by the command; false when it does not come with the right caption.
    bool openAdd();
    bool openEdit();

    HWND sheet() const { return sheet_; }
    HWND item(int id) const;
    /// The page that the user sees: the number of its template.
    int currentPage() const;
    void turnTo(int page) const;

    /// A field's text, or that of a list's chosen item.
    std::string text(int id) const { return textOf(item(id)); }
    bool isChecked(int id) const;
    bool isEnabled(int id) const { return IsWindowEnabled(item(id)) != FALSE; }
    /// Whether it would be seen if its page were.
    bool isShown(int id) const;
    int itemCount(int list) const;
    /// The position of a list's chosen item.
    int selected(int list) const;

    /// Types in the place of what the field shows; true when that is what it shows then.
    bool replace(int id, const std::string& text) const;
    void click(int id) const;
    /// Chooses an item of a drop-down list.
    void choose(int list, int position) const;
    /// Chooses the kind, and waits for its controls.
    bool chooseKind(scheduler::ScheduleKind kind) const;

    /// Presses a button of the sheet: IDOK, IDCANCEL.
    void press(int button) const;
    /// Presses a key in whatever has the focus, alone or with Alt.
    void pressKey(WPARAM key) const;
    void pressWithAlt(char letter) const;
    /// The control that has the focus; the sheet's buttons among them.
    int focused() const;
    bool focusGoesTo(int id) const;
    /// As the mouse would; waits for it.
    bool moveFocusTo(int id) const;
    /// The controls the Tab key visits, starting after the focused one, until one repeats. For any dialog.
    std::vector<HWND> tabStops() const;

    bool isOpen() const { return IsWindow(sheet_) != FALSE; }
    /// Waits until the sheet is gone and its owner can be used again.
    bool closes() const;
    /// Presses OK, waits for the end, and gives the schedule that is saved then.
    std::vector<scheduler::ScheduledProject> saveByOk() const;

    /// Waits for a message box over the sheet; null when there is none.
    HWND message() const;
    bool isMessageClosed() const;

private:
    bool open(int command, const char* caption);

    const SchedulerProcess& scheduler_;
    HWND sheet_ = nullptr;
};

} // namespace driver
