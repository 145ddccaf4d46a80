#pragma once

#include "scheduler/run/runlauncher.h"

#include <windows.h>

namespace scheduler {

/// Posted when a run's process has ended. wParam: run number; lParam: 0.
inline constexpr UINT WM_RUN_FINISHED = WM_USER + 1;

/// Posted before WM_RUN_FINISHED if the process did not start. wParam: run number; lParam: error code.
inline constexpr UINT WM_RUN_NOT_STARTED = WM_APP + 1;

/// Starts a thread for each run. The thread starts the process, waits until it ends and notifies a window.
class WorkerLauncher : public RunLauncher {
public:
    /// Sets the window to notify of runs that start from now on.
    void reportTo(HWND window) { window_ = window; }

    /// If memory runs out when the thread starts (see base::startThread), the end of the run is never
    /// reported, and the entry stays marked as running until the scheduler restarts.
    bool launch(const ScheduledProject& entry) override;

private:
    HWND window_ = nullptr;
};

} // namespace scheduler
