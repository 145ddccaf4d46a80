// Schedules whose runs are those of the marking spider.
#pragma once

#include "benches/program/marks.h"
#include "scheduler/model/scheduledproject.h"

#include <string>
#include <vector>

namespace bench {

/// The marking spider, registered for projects in a fresh folder.
class MarkingSpider {
public:
    MarkingSpider();

    /// An entry that is due once.
    scheduler::ScheduledProject makeEntry(int number, base::TimeValue due) const;

private:
    std::string folder_;
};

void saveEntries(const std::vector<scheduler::ScheduledProject>& entries);

/// When the schedule's file was written last.
Moment savedAt();

} // namespace bench
