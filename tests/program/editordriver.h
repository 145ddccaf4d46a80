#pragma once

#include "tests/program/scheduledriver.h"

#include <windows.h>

#include <string>
#include <vector>

namespace driver {

class EditorDriver {
public:
    explicit EditorDriver(const SchedulerProcess& scheduler) : scheduler_(scheduler) {}

    // False when no sheet with the expected caption opens.
    bool openAdd();
    bool openEdit();

    HWND sheet() const { return sheet_; }
    HWND item(int id) const;
    /// Template id; 0 when no page is shown.
    int currentPage() const;
    void turnTo(int page) const;

    std::string text(int id) const { return textOf(item(id)); }
    bool isEnabled(int id) const { return IsWindowEnabled(item(id)) != FALSE; }
    /// Whether the control is visible on its page, even if the page is hidden.
    bool isShown(int id) const;

    /// Types over the text of a field; false when it does not show the new text.
    bool replace(int id, const std::string& text) const;
    void click(int id) const;
    void choose(int list, int position) const;
    bool chooseKind(scheduler::ScheduleKind kind) const;

    void press(int button) const;
    void pressKey(WPARAM key) const;
    bool moveFocusTo(int id) const;
    /// The controls that Tab visits in any dialog, from the focused one until one repeats.
    std::vector<HWND> tabStops() const;

    bool isOpen() const { return IsWindow(sheet_) != FALSE; }
    bool closes() const;
    /// Presses OK and returns the saved schedule; empty when the sheet does not close.
    std::vector<scheduler::ScheduledProject> saveByOk() const;

private:
    bool open(int command, const char* caption);

    const SchedulerProcess& scheduler_;
    HWND sheet_ = nullptr;
};

} // namespace driver
