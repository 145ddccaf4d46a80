#pragma once

#include "scheduler/run/usermessages.h"

#include <windows.h>

namespace scheduler {

/// Message boxes with the program's title. The window set with setOwner() owns notices; activeWindowOr() of
/// that window owns errors.
class MessageBoxes : public UserMessages {
public:
    void setOwner(HWND owner) { owner_ = owner; }

    void showError(const std::string& text) override;
    void showNotice(const std::string& text) override;

private:
    HWND owner_ = nullptr;
};

/// The owner for a new dialog: the active window, else the main window or the dialog open over it.
HWND activeWindowOr(HWND mainWindow);

/// True for Yes.
[[nodiscard]] bool askYesNo(HWND mainWindow, const std::string& text);

} // namespace scheduler
