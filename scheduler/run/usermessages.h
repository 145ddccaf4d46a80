#pragma once

#include <string>

namespace scheduler {

class UserMessages {
public:
    virtual ~UserMessages() = default;

    /// A requested action needs something that is not installed: an error over the active window.
    virtual void showError(const std::string& text) = 0;

    /// A requested action did not happen: a plain message over the main window.
    virtual void showNotice(const std::string& text) = 0;
};

} // namespace scheduler
