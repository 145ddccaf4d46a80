#pragma once

#include "scheduler/ui/framework/propertysheet.h"
#include "scheduler/ui/projectpage.h"
#include "scheduler/ui/schedulepage.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scheduler {

/// The property sheet for an entry. Saving and computing the next run are left to the caller.
class ScheduleEditor : public framework::PropertySheetDialog {
public:
    /// Edits `record` in place on OK only, except that an invalid `afterIndex` is replaced at once. Without a
    /// position, the entry is new. The arguments must outlive the editor.
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
