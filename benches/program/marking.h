#pragma once

#include "benches/program/marks.h"
#include "scheduler/model/scheduledproject.h"

#include <string>
#include <vector>

namespace bench {

/// Registers the marking spider for project files. Makes entries for it, with projects in a new folder.
class MarkingSpider {
public:
    MarkingSpider();

    scheduler::ScheduledProject makeEntry(int number, base::TimeValue due) const;

private:
    std::string folder_;
};

void saveEntries(const std::vector<scheduler::ScheduledProject>& entries);

/// Time of the last write to the schedule file.
Moment savedAt();

} // namespace bench
