#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "scheduler/run/engine.h"
#include "scheduler/ui/selection.h"

#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace scheduler {

/// Opens a project file in the program registered for its type.
using ProjectOpener = std::function<void(const std::string& path)>;

/// The commands on the schedule; independent of windows. Each change notifies the observers and is saved. An
/// empty selection is ignored. Do not remove entries while a dialog or message box is open: the command that
/// opened it still uses positions.
class ScheduleCommands {
public:
    /// The arguments must outlive this object.
    ScheduleCommands(ScheduleList& schedule, SchedulerEngine& engine, ScheduleStore& store,
                     const base::Clock& clock, ProjectOpener openProject)
        : schedule_(schedule),
          engine_(engine),
          store_(store),
          clock_(clock),
          openProject_(std::move(openProject)) {}

    /// The record that the editor initially shows for a new entry.
    ScheduledProject newEntry() const;

    /// Appends the record or, if there are two or more files (see addEntries), one copy per file.
    void add(const ScheduledProject& record, std::span<const std::string> files);

    /// Copies the fields that a user can set. The entry keeps the others.
    void edit(std::size_t position, ScheduledProject edited);

    /// Toggles each entry separately, so a mixed selection stays mixed.
    void toggle(const Selection& selection);

    /// Does not ask for confirmation. Also removes running entries; their end notices are then ignored.
    void remove(const Selection& selection);

    void runNow(const Selection& selection);

    void open(const Selection& selection);

    /// Adds the project files with default settings and ignores other files.
    void addDropped(const std::vector<std::string>& paths);

private:
    base::TimeValue nextRunOf(const ScheduledProject& entry) const;

    ScheduleList& schedule_;
    SchedulerEngine& engine_;
    ScheduleStore& store_;
    const base::Clock& clock_;
    ProjectOpener openProject_;
};

} // namespace scheduler
