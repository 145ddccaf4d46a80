#include "scheduler/model/additions.h"

#include "lib/base/paths.h"

#include <new>
#include <utility>

namespace scheduler {

ScheduledProject newEntryTemplate(const ScheduleList& list, base::TimeValue now) {
    ScheduledProject record;
    if (list.empty()) {
        record.kind = ScheduleKind::AtStartup;
    } else {
        record.kind = ScheduleKind::AfterProject;
        record.afterIndex = static_cast<std::int32_t>(list.size() - 1);
    }
    const base::TimeValue inAMinute = now + base::TimeSpan::fromMinutes(1);
    record.time = base::TimeValue(inAMinute.seconds() / 60 * 60);
    return record;
}

void addEntry(ScheduleList& list, ScheduledProject record, const EngineState& state, const base::Clock& clock,
              ScheduleStore& store) {
    record.nextRun = computeNextRun(state, record, clock.now(), clock);
    if (list.append(std::move(record)) != ScheduleList::noMemory)
        store.save(list);
}

void addEntries(ScheduleList& list, const ScheduledProject& pattern, std::span<const std::string> names,
                const EngineState& state, const base::Clock& clock, ScheduleStore& store) {
    const ScheduleBatch batch(list);
    for (const std::string& name : names) {
        try {
            ScheduledProject record = pattern;
            // The folder already ends in a backslash. The file system accepts a second one, and existing
            // schedules have such paths.
            record.path = &name == names.data() ? name : base::directoryOf(names.front()) + "\\" + name;
            addEntry(list, std::move(record), state, clock, store);
        } catch (const std::bad_alloc&) {
            continue;
        }
    }
}

} // namespace scheduler
