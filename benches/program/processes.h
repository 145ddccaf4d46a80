#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <string>

namespace bench {

/// A process with one main window. The destructor terminates the process.
class WindowProcess {
public:
    WindowProcess(const std::string& commandLine, std::string windowClass, WORD showCommand = SW_SHOWNORMAL);
    ~WindowProcess();
    WindowProcess(const WindowProcess&) = delete;
    WindowProcess& operator=(const WindowProcess&) = delete;

    /// Waits until the window is visible and painted. False after a timeout.
    bool waitUntilShown();
    /// Also accepts a hidden window.
    bool waitUntilCreated();

    HWND window() const { return window_; }

private:
    bool waitForWindow(bool visible);

    std::string windowClass_;
    base::KernelHandle process_;
    HWND window_ = nullptr;
};

std::string schedulerCommand();
std::string emptyProgramCommand(std::size_t rows);

inline constexpr const char* schedulerClass = "scheduler";
inline constexpr const char* emptyProgramClass = "empty program";

/// The next start then uses the defaults.
void clearPreferences();

} // namespace bench
