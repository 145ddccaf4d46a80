// The commands that change the schedule or act on its entries. Knows no window.
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

/// Opens a project, given by its path, in the program that owns its file type.
using ProjectOpener = std::function<void(const std::string& path)>;

/// Each command that changes the schedule tells its observers and saves it. Nothing happens on an empty
/// selection. Positions stay valid while a command runs: those that remove entries must not be called while
/// a message box or dialog is open.
class ScheduleCommands {
public:
    /// All outlive the commands.
    ScheduleCommands(ScheduleList& schedule, SchedulerEngine& engine, ScheduleStore& store,
                     const base::Clock& clock, ProjectOpener openProject)
        : schedule_(schedule),
          engine_(engine),
          store_(store),
          clock_(clock),
          openProject_(std::move(openProject)) {}

    /// A record for the editor to start from.
    ScheduledProject newEntry() const;

    /// Appends the record; with two or more files, in the form that addEntries takes, one copy for each of
    /// them.
    void add(const ScheduledProject& record, std::span<const std::string> files);

    /// Takes over the fields that a user sets from an edited copy of the entry.
    void edit(std::size_t position, ScheduledProject edited);

    /// Switches each entry from enabled to disabled or back, so that a mixed selection stays mixed.
    void toggle(const Selection& selection);

    /// Without asking. A running entry is removed too; the end of its run is then ignored.
    void remove(const Selection& selection);

    void runNow(const Selection& selection);

    void open(const Selection& selection);

    /// Adds each file that is a project, with default settings; others are left out.
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
