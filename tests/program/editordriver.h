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
    /// The template id of the visible page, or 0.
    int currentPage() const;
    void turnTo(int page) const;

    std::string text(int id) const { return textOf(item(id)); }
    bool isEnabled(int id) const { return IsWindowEnabled(item(id)) != FALSE; }
    /// Whether the control has WS_VISIBLE; its page may be hidden.
    bool isShown(int id) const;

    /// Types `text` over a field's text; false if the field does not show the new text.
    bool replace(int id, const std::string& text) const;
    void click(int id) const;
    void choose(int list, int position) const;
    bool chooseKind(scheduler::ScheduleKind kind) const;

    void press(int button) const;
    void pressKey(WPARAM key) const;
    bool moveFocusTo(int id) const;
    /// The controls that Tab visits, from the focused one until one repeats. Works in every dialog.
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
