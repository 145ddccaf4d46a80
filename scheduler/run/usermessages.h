#pragma once

#include <string>

namespace scheduler {

class UserMessages {
public:
    virtual ~UserMessages() = default;

    /// Shows an error message over the active window, and waits until the user closes the message.
    virtual void showError(const std::string& text) = 0;

    /// Like showError, but over the main window and without the error icon.
    virtual void showNotice(const std::string& text) = 0;
};

} // namespace scheduler
