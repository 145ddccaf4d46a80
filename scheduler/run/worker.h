#pragma once

#include "scheduler/run/runlauncher.h"

#include <windows.h>

namespace scheduler {

/// Posted when a run's process has ended. wParam: run number; lParam: 0.
inline constexpr UINT WM_RUN_FINISHED = WM_USER + 1;

/// Posted before WM_RUN_FINISHED if the process did not start. wParam: run number; lParam: error code.
inline constexpr UINT WM_RUN_NOT_STARTED = WM_APP + 1;

/// Runs each process on a worker thread, which waits for its end and reports to one window.
class WorkerLauncher : public RunLauncher {
public:
    /// The window to notify of runs started from now on.
    void reportTo(HWND window) { window_ = window; }

    /// Exception to the contract: if memory runs out when the worker starts (see base::startThread), the end
    /// of the run is never reported. The entry then shows as running until the scheduler restarts.
    bool launch(const ScheduledProject& entry) override;

private:
    HWND window_ = nullptr;
};

} // namespace scheduler
