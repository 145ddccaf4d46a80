#pragma once

#include <string>

namespace scheduler {

class UserMessages {
public:
    virtual ~UserMessages() = default;

    /// Shows an error over the active window, and waits until the user closes it.
    virtual void showError(const std::string& text) = 0;

    /// The same over the main window, without the error icon.
    virtual void showNotice(const std::string& text) = 0;
};

} // namespace scheduler
