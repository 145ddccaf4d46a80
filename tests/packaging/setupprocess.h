#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <string>

namespace driver {

/// This process's token without administrator rights.
base::KernelHandle limitedToken();

/// A running installer or uninstaller, killed on destruction.
class SetupProcess {
public:
    /// Runs with the rights of `token`; if null, with the rights of the test.
    explicit SetupProcess(const std::string& commandLine, HANDLE token = nullptr);
    ~SetupProcess();
    SetupProcess(const SetupProcess&) = delete;
    SetupProcess& operator=(const SetupProcess&) = delete;

    /// Waits for a window that shows a text beginning with `text`, and presses the window's button with the
    /// id `button`.
    void press(const std::string& text, int button) const;
    /// Waits for a control whose text begins with `text` and clicks it.
    void click(const std::string& text) const;
    /// Whether a control whose text begins with `text` is visible.
    bool shows(const std::string& text) const;
    /// The exit code; base::processFailed if the process does not end.
    DWORD waitForEnd() const;

private:
    base::KernelHandle process_;
    DWORD id_ = 0;
};

} // namespace driver
