// One thread per run: it starts the process, waits for its end and reports it.
#pragma once

#include "scheduler/run/runlauncher.h"

#include <windows.h>

namespace scheduler {

/// Posted to the main window when a run's process has ended; wParam is the run number, lParam 0.
inline constexpr UINT WM_RUN_FINISHED = WM_USER + 1;

/// Posted before WM_RUN_FINISHED when the process of a run could not be started; wParam is the run number,
/// lParam the platform's error code.
inline constexpr UINT WM_RUN_NOT_STARTED = WM_APP + 1;

/// Starts runs on worker threads that report to one window.
class WorkerLauncher : public RunLauncher {
public:
    /// The window that is told of the end of each run started from now on.
    void reportTo(HWND window) { window_ = window; }

    /// Other than promised, the end of the run may
    /// never be reported, though true was returned: when memory runs out at the very start of the worker, its
    /// thread does nothing (see base::startThread). The entry then runs until the scheduler is started again.
    bool launch(const ScheduledProject& entry) override;

private:
    HWND window_ = nullptr;
};

} // namespace scheduler
