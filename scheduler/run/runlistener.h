#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/scheduledproject.h"

#include <cstdint>

namespace scheduler {

enum class RunEnd {
    Reported,
    GaveUpWaiting, ///< not started: another project ran for too long
    SystemError,   ///< not started: the launch failed
};

struct FinishedRun {
    const ScheduledProject& entry; ///< `lastRun` and `lastResult` already belong to this run
    base::TimeValue end;
    std::uint32_t errorCode;
    RunEnd how;
};

/// Notified of each run except those of the test command. A run's start and end have the same run number.
class RunListener {
public:
    virtual ~RunListener() = default;

    /// `entry` is already marked as running. If it is removed during the run, onRunFinished is not called.
    virtual void onRunStarted(const ScheduledProject& entry, bool manual) noexcept = 0;

    /// Called after the schedule is saved.
    virtual void onRunFinished(const FinishedRun& run) noexcept = 0;
};

} // namespace scheduler
