// A cell's text by the runtime and locale calls that it cannot do without, each once, and nothing else.
#pragma once

#include "scheduler/ui/schedulerows.h"

#include <cstddef>
#include <string>

namespace bench {

/// Of an entry as manyEntries() makes them.
std::string plainText(const scheduler::ScheduleList& list, std::size_t position,
                      scheduler::ScheduleColumn column);

} // namespace bench
