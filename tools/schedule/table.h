#pragma once

#include "scheduler/model/schedulelist.h"

#include <string>

/// The schedule as a text table: a line of headings and a line for each entry, in aligned columns.
std::string scheduleTable(const scheduler::ScheduleList& list, base::TimeValue now);
