// The schedule as text in columns.
#pragma once

#include "scheduler/model/schedulelist.h"

#include <string>

/// A line of headings and one per entry, each with its line end, the columns as wide as their longest cell.
std::string scheduleTable(const scheduler::ScheduleList& list, base::TimeValue now);
