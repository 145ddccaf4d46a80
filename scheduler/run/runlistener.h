// The engine's view of an object that follows the runs.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/scheduledproject.h"

#include <cstdint>

namespace scheduler {

/// How a run came to its end.
enum class RunEnd {
    Reported,      ///< the worker has reported it
    GaveUpWaiting, ///< it never began: another project was running for too long
    SystemError,   ///< it never began: no worker could be started
};

struct FinishedRun {
    const ScheduledProject&
        entry; ///< after the run: `lastRun` is the start of the run, `lastResult` its result
    base::TimeValue end;
    std::uint32_t errorCode; ///< 0 = success
    RunEnd how;
};

/// Told of each run, except those of the test command. The run number ties its start to its end.
class RunListener {
public:
    virtual ~RunListener() = default;

    /// Told once the entry is marked as running. A run whose end is ignored is never finished.
    virtual void onRunStarted(const ScheduledProject& entry, bool manual) noexcept = 0;

    /// Told after the schedule is saved.
    virtual void onRunFinished(const FinishedRun& run) noexcept = 0;
};

} // namespace scheduler
