// Message boxes captioned with the program's title.
#pragma once

#include "scheduler/run/usermessages.h"

#include <windows.h>

namespace scheduler {

class MessageBoxes : public UserMessages {
public:
    /// The main window, over which notices are shown.
    void setOwner(HWND owner) { owner_ = owner; }

    void showError(const std::string& text) override;
    void showNotice(const std::string& text) override;

private:
    HWND owner_ = nullptr;
};

/// A question over the active window; true when the answer is Yes.
bool askYesNo(const std::string& text);

} // namespace scheduler
