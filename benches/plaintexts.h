// Lower bound for creating a cell's text. Makes each necessary runtime and locale call once.
#pragma once

#include "scheduler/ui/schedulerows.h"

#include <cstddef>
#include <string>

namespace bench {

/// For entries made by manyEntries() only.
std::string plainText(const scheduler::ScheduleList& list, std::size_t position,
                      scheduler::ScheduleColumn column);

} // namespace bench
