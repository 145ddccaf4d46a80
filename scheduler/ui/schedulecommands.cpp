#include "scheduler/ui/schedulecommands.h"

#include "lib/base/paths.h"
#include "lib/base/regexp.h"
#include "scheduler/model/additions.h"
#include "scheduler/model/deletion.h"

#include <utility>

namespace scheduler {
namespace {

bool isProjectFile(const std::string& path) {
    static const base::Expression projectExtension("kr[abc]");
    return projectExtension.matches(base::extensionOf(path));
}

} // namespace

void ScheduleCommands::toggle(const Selection& selection) {
    if (selection.empty())
        return;
    for (const std::size_t position : selection) {
        ScheduledProject& entry = schedule_[position];
        entry.disabled = !entry.disabled;
        entry.nextRun = computeNextRun(engine_.state(), entry, clock_.now());
    }
    static_cast<void>(store_.save(schedule_));
}

void ScheduleCommands::remove(const Selection& selection) {
    if (selection.empty())
        return;
    deleteEntries(schedule_, selection);
    static_cast<void>(store_.save(schedule_));
}

void ScheduleCommands::runNow(const Selection& selection) {
    for (const std::size_t position : selection)
        if (position < schedule_.size()) // a message box of an earlier one lets the schedule change
            engine_.runEntry(position, clock_.now(), true);
}

bool ScheduleCommands::addDropped(const std::vector<std::string>& paths) {
    bool added = false;
    for (const std::string& path : paths) {
        if (!isProjectFile(path))
            continue;
        ScheduledProject record;
        record.path = path;
        static_cast<void>(addEntry(schedule_, std::move(record), engine_.state(), store_));
        added = true;
    }
    return added;
}

} // namespace scheduler
