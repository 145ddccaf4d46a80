// What starts the processes of runs, as the engine sees it.
#pragma once

#include "scheduler/model/scheduledproject.h"

namespace scheduler {

class RunLauncher {
public:
    virtual ~RunLauncher() = default;

    /// Starts the entry's run, whose end is reported later by its run number. False when no worker could be
    /// started. May throw std::exception; nothing was started then.
    [[nodiscard]] virtual bool launch(const ScheduledProject& entry) = 0;
};

} // namespace scheduler
