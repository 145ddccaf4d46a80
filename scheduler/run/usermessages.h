// What running projects has to tell the user. The user interface decides how.
#pragma once

#include <string>

namespace scheduler {

class UserMessages {
public:
    virtual ~UserMessages() = default;

    /// Something that the user asked for needs what is not installed: an error over the active window.
    virtual void showError(const std::string& text) = 0;

    /// Something that the user asked for did not happen: a plain message over the main window.
    virtual void showNotice(const std::string& text) = 0;
};

} // namespace scheduler
