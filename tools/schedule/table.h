#pragma once

#include "scheduler/model/schedulelist.h"

#include <string>

/// The schedule as a text table with aligned columns: a line of headings and a line per entry.
std::string scheduleTable(const scheduler::ScheduleList& list, base::TimeValue now);
