// Message boxes captioned with the program's title.
#pragma once

#include "scheduler/run/usermessages.h"

#include <windows.h>

namespace scheduler {

class MessageBoxes : public UserMessages {
public:
    /// The main window, over which notices are shown, and errors while no window is active.
    void setOwner(HWND owner) { owner_ = owner; }

    void showError(const std::string& text) override;
    void showNotice(const std::string& text) override;

private:
    HWND owner_ = nullptr;
};

/// The owner of what a command opens: this thread's active window. There is none while another program is in
/// front, and commands come all the same: then the main window, or what is open over it, has to wait.
HWND activeWindowOr(HWND mainWindow);

/// A question over the active window, or else the main window; true when the answer is Yes.
[[nodiscard]] bool askYesNo(HWND mainWindow, const std::string& text);

} // namespace scheduler
