#include "benches/entries.h"

#include "scheduler/model/schedulefile.h"

#include <stdexcept>
#include <string>

namespace bench {

using base::TimeSpan;
using base::TimeValue;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

TimeValue referenceTime() {
    static const TimeValue now = TimeValue::now();
    return now;
}

std::vector<ScheduledProject> manyEntries(std::size_t count) {
    std::vector<ScheduledProject> entries(count);
    for (std::size_t position = 0; position < count; ++position) {
        const int i = static_cast<int>(position);
        const auto shuffled = static_cast<int>(position * 7919 % count);
        ScheduledProject& entry = entries[position];
        entry.path = "C:\\Sites\\project " + std::to_string(shuffled) + ".kra";
        entry.kind = static_cast<ScheduleKind>(i % scheduler::kindCount);
        entry.afterIndex = i / 2;
        entry.minutes = i % 60;
        entry.time = referenceTime() + TimeSpan::fromMinutes(120 + i % 40000);
        entry.weekdays[position % 7] = static_cast<std::uint8_t>(i % 2);
        entry.dayOfMonth = i % 28 + 1;
        entry.runCommand = static_cast<RunCommand>(i % 4);
        entry.timeLimitMinutes = i % 3 * 45;
        entry.disconnectWhenDone = static_cast<std::uint8_t>(i % 5 == 0);
        entry.nextRun = entry.time;
        if (i % 5 == 0)
            entry.dialupEntry = "Office line";
        if (i % 3 != 0)
            entry.lastRun = referenceTime() - TimeSpan::fromMinutes(i % 40000);
        if (i % 3 == 1)
            entry.lastResult = std::to_string(shuffled) + " pages could not be found";
    }
    return entries;
}

void saveForBench(const scheduler::ScheduleList& list) {
    if (!scheduler::saveSchedule(list))
        throw std::runtime_error("cannot save " + scheduler::schedulePath());
}

} // namespace bench
