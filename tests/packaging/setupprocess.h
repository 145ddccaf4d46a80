// An installer or uninstaller that runs beside the test.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <string>

namespace driver {

/// A token of this process without its administrator rights.
base::KernelHandle limitedToken();

class SetupProcess {
public:
    /// Runs with the rights of `token`, or with those of the test.
    explicit SetupProcess(const std::string& commandLine, HANDLE token = nullptr);
    ~SetupProcess();
    SetupProcess(const SetupProcess&) = delete;
    SetupProcess& operator=(const SetupProcess&) = delete;

    /// Waits for a window that shows a text beginning with `text`, and presses its button with the id
    /// `button`.
    void press(const std::string& text, int button) const;
    /// Waits for a control with a text beginning with `text`, and clicks on it.
    void click(const std::string& text) const;
    /// Whether a control with a text beginning with `text` can be seen.
    bool shows(const std::string& text) const;
    /// The exit code; base::processFailed when the process does not end.
    DWORD waitForEnd() const;

private:
    base::KernelHandle process_;
    DWORD id_ = 0;
};

} // namespace driver
