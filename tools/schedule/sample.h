// A small schedule that has something to show within seconds.
#pragma once

#include "scheduler/model/scheduledproject.h"

#include <string>
#include <vector>

/// Ten entries with the projects of `folder`, which ends in a backslash, as seen at the clock's time: a
/// project and a command line that are due in `seconds`, a project that follows the first, and others of
/// every kind, which run in 20 minutes at the earliest or not at all.
std::vector<scheduler::ScheduledProject> sampleEntries(const std::string& folder, const base::Clock& clock,
                                                       unsigned seconds);

enum class Sample {
    DueSoon, ///< the first three: the scheduler then ends without a question, because nothing is left to run
    Whole,
};

/// Writes sample projects into `folder`, which is made if need be, and replaces the schedule of this Windows
/// with sampleEntries. The scheduler has to be started before `seconds` have passed: what is due earlier
/// never runs. False when a file could not be written.
bool writeSample(const std::string& folder, Sample sample, unsigned seconds = 8);
