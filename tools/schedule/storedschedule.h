// Reads the schedule file while the scheduler may be writing it.
#pragma once

#include "scheduler/model/schedulelist.h"

/// Fills `list` from the schedule file. False when there is none or when it is being written at this moment.
bool readStoredSchedule(scheduler::ScheduleList& list);
