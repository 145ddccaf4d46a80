// The sheet in which the user adds a project to the schedule or changes an entry.
#pragma once

#include "scheduler/ui/framework/propertysheet.h"
#include "scheduler/ui/projectpage.h"
#include "scheduler/ui/schedulepage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scheduler {

/// Knows neither the schedule's file nor the engine nor next runs: what follows from OK is the caller's.
class ScheduleEditor : public framework::PropertySheetDialog {
public:
    /// `run` edits `record` in place; all of it is written on OK only, but for the project to wait for, which
    /// is set right when it names none. The record is the entry at `position` of the schedule or, without a
    /// position, a new one. It, the schedule and the clock must outlive the editor.
    ScheduleEditor(ScheduledProject& record, const ScheduleList& schedule,
                   std::optional<std::size_t> position, const base::Clock& clock);

    /// Whether the Browse dialog takes several files, as it does from the start.
    void setMultiSelect(bool several) { projectPage_.setMultiSelect(several); }

    /// The files chosen in the Browse dialog, in the form that addEntries takes. Empty when the stored path
    /// is not the text of several files.
    std::vector<std::string> chosenFiles() const { return projectPage_.chosenFiles(); }

private:
    ProjectPage projectPage_;
    SchedulePage schedulePage_;
};

} // namespace scheduler
