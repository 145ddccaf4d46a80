// Lower bound for a cell's text: each necessary runtime and locale call, made once.
#pragma once

#include "scheduler/ui/schedulerows.h"

#include <cstddef>
#include <string>

namespace bench {

/// For entries made by manyEntries() only.
std::string plainText(const scheduler::ScheduleList& list, std::size_t position,
                      scheduler::ScheduleColumn column);

} // namespace bench
