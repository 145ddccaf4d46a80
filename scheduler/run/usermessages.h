#pragma once

#include <string>

namespace scheduler {

class UserMessages {
public:
    virtual ~UserMessages() = default;

    /// Shows an error over the active window: a requested action needs something that is not installed.
    virtual void showError(const std::string& text) = 0;

    /// Shows a plain message over the main window: a requested action did not happen.
    virtual void showNotice(const std::string& text) = 0;
};

} // namespace scheduler
