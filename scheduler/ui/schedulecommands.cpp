#include "scheduler/ui/schedulecommands.h"

#include "lib/base/paths.h"
#include "lib/base/regexp.h"
#include "scheduler/model/additions.h"
#include "scheduler/model/deletion.h"
#include "scheduler/model/edits.h"

#include <utility>

namespace scheduler {
namespace {

bool isProjectFile(const std::string& path) {
    static const base::Expression projectExtension("kr[abc]");
    return projectExtension.matches(base::extensionOf(path));
}

} // namespace

ScheduledProject ScheduleCommands::newEntry() const {
    return newEntryTemplate(schedule_, clock_.now());
}

void ScheduleCommands::add(const ScheduledProject& record, std::span<const std::string> files) {
    if (files.size() < 2)
        addEntry(schedule_, record, engine_.state(), clock_, store_);
    else
        addEntries(schedule_, record, files, engine_.state(), clock_, store_);
}

void ScheduleCommands::edit(std::size_t position, ScheduledProject edited) {
    ScheduledProject& entry = schedule_[position];
    applyEdit(entry, std::move(edited));
    entry.nextRun = nextRunOf(entry);
    schedule_.notifyChanged();
    store_.save(schedule_);
}

void ScheduleCommands::toggle(const Selection& selection) {
    if (selection.empty())
        return;
    for (const std::size_t position : selection) {
        ScheduledProject& entry = schedule_[position];
        entry.disabled = !entry.disabled;
        entry.nextRun = nextRunOf(entry);
    }
    schedule_.notifyChanged();
    store_.save(schedule_);
}

void ScheduleCommands::remove(const Selection& selection) {
    if (selection.empty())
        return;
    deleteEntries(schedule_, selection);
    store_.save(schedule_);
}

void ScheduleCommands::runNow(const Selection& selection) {
    for (const std::size_t position : selection)
        engine_.runEntry(position, clock_.now(), true);
}

void ScheduleCommands::open(const Selection& selection) {
    for (const std::size_t position : selection)
        openProject_(schedule_[position].path);
}

void ScheduleCommands::addDropped(const std::vector<std::string>& paths) {
    const ScheduleBatch batch(schedule_);
    for (const std::string& path : paths) {
        if (!isProjectFile(path))
            continue;
        ScheduledProject record;
        record.path = path;
        addEntry(schedule_, std::move(record), engine_.state(), clock_, store_);
    }
}

base::TimeValue ScheduleCommands::nextRunOf(const ScheduledProject& entry) const {
    return computeNextRun(engine_.state(), entry, clock_.now(), clock_);
}

} // namespace scheduler
