// A small schedule for demonstrations.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <string>
#include <vector>

/// Entries with the projects in `folder`, which ends in a backslash. A project and a command line are due
/// `seconds` after the clock's time, and another project follows the first. The other entries cover the
/// remaining kinds, and none runs within the next 20 minutes.
std::vector<scheduler::ScheduledProject> sampleEntries(const std::string& folder, const base::Clock& clock,
                                                       unsigned seconds);

enum class Sample {
    DueSoon, ///< the first three entries: once they have run, the scheduler exits without a question
    Whole,
};

/// Writes sample projects into `folder`, which is created if needed, and replaces the schedule by
/// sampleEntries(). Entries that are already due when the scheduler starts never run, so start it within
/// `seconds`. False if a file could not be written.
bool writeSample(const std::string& folder, Sample sample, unsigned seconds = 8);
