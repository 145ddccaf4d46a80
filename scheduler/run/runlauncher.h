// What starts the processes of runs, as the engine sees it.
#pragma once

#include "scheduler/run/runrequest.h"

#include <memory>
#include <string>

namespace scheduler {

struct ScheduledProject;

class RunLauncher {
public:
    virtual ~RunLauncher() = default;

    virtual std::string commandLineOf(const ScheduledProject& entry) = 0;

    /// Starts the run; its end is reported later by its run number. False, with the request freed, when no
    /// worker could be started.
    [[nodiscard]] virtual bool launch(std::unique_ptr<RunRequest> request) = 0;
};

} // namespace scheduler
