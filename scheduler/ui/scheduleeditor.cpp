#include "scheduler/ui/scheduleeditor.h"

#include "scheduler/run/dialupconnector.h"

namespace scheduler {

ScheduleEditor::ScheduleEditor(ScheduledProject& record, const ScheduleList& schedule,
                               std::optional<std::size_t> position, const base::Clock& clock)
    : projectPage_(record, DialupConnector::instance().entries()),
      schedulePage_(record, schedule, position, clock) {
    add(projectPage_);
    add(schedulePage_);
}

} // namespace scheduler
