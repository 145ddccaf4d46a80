#pragma once

#include "scheduler/ui/framework/propertysheet.h"
#include "scheduler/ui/projectpage.h"
#include "scheduler/ui/schedulepage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scheduler {

/// The property sheet for an entry. The caller computes the next run and saves.
class ScheduleEditor : public framework::PropertySheetDialog {
public:
    /// Changes `record` on OK only, except that an invalid `afterIndex` is replaced at once. No `position`
    /// means a new entry. The arguments must outlive the editor.
    ScheduleEditor(ScheduledProject& record, const ScheduleList& schedule,
                   std::optional<std::size_t> position, const base::Clock& clock);

    /// See ProjectPage.
    void setMultiSelect(bool several) { projectPage_.setMultiSelect(several); }
    std::vector<std::string> chosenFiles() const { return projectPage_.chosenFiles(); }

private:
    ProjectPage projectPage_;
    SchedulePage schedulePage_;
};

} // namespace scheduler
