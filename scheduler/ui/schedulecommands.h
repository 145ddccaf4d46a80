// What the list's commands do to the entries that are selected. Knows no window.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "scheduler/run/engine.h"
#include "scheduler/run/usermessages.h"

#include <cstddef>
#include <string>
#include <vector>

namespace scheduler {

/// Positions in the schedule, ascending, each once.
using Selection = std::vector<std::size_t>;

/// Nothing happens on an empty selection. Each command that changes the schedule saves it once.
class ScheduleCommands {
public:
    /// All outlive the commands.
    ScheduleCommands(ScheduleList& schedule, SchedulerEngine& engine, ScheduleStore& store,
                     const base::Clock& clock)
        : schedule_(schedule), engine_(engine), store_(store), clock_(clock) {}

    /// Each entry changes from enabled to disabled or back by itself, so that a mixed selection stays mixed.
    void toggle(const Selection& selection);

    /// Without asking. A running entry goes too; the end of its run is then nobody's.
    void remove(const Selection& selection);

    void runNow(const Selection& selection);

    /// Adds each file that is a project, with default settings; others are left out. True when any was added.
    [[nodiscard]] bool addDropped(const std::vector<std::string>& paths);

private:
    ScheduleList& schedule_;
    SchedulerEngine& engine_;
    ScheduleStore& store_;
    const base::Clock& clock_;
};

} // namespace scheduler
