// The processes that are measured from outside.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <string>

namespace bench {

/// A program with one main window, ended when it goes.
class WindowProcess {
public:
    /// `showCommand` is one of the platform's SW_ values.
    WindowProcess(const std::string& commandLine, std::string windowClass, WORD showCommand = SW_SHOWNORMAL);
    ~WindowProcess();
    WindowProcess(const WindowProcess&) = delete;
    WindowProcess& operator=(const WindowProcess&) = delete;

    /// Waits until the window is visible and, having painted itself, answers.
    bool waitUntilShown();
    /// Waits until it answers, visible or not.
    bool waitUntilThere();

    HWND window() const { return window_; }

private:
    bool waitForWindow(bool visible);

    std::string windowClass_;
    base::KernelHandle process_;
    HWND window_ = nullptr;
};

/// The built scheduler and the empty program beside it, as command lines.
std::string schedulerCommand();
std::string emptyProgramCommand(std::size_t rows);

inline constexpr const char* schedulerClass = "scheduler";
inline constexpr const char* emptyProgramClass = "empty program";

/// Gives an undisturbed start: no schedule but this, no preferences.
void clearPreferences();

} // namespace bench
