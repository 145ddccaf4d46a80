#pragma once

#include "scheduler/model/scheduledproject.h"

namespace scheduler {

class RunLauncher {
public:
    virtual ~RunLauncher() = default;

    /// Starts the entry's run; its end is reported later with the run number. False if no worker could be
    /// started. Can throw std::exception; then nothing was started.
    [[nodiscard]] virtual bool launch(const ScheduledProject& entry) = 0;
};

} // namespace scheduler
