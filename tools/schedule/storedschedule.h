#pragma once

#include "scheduler/model/schedulelist.h"

/// Fills `list` from the schedule file. False if there is no complete file, for example during a save.
bool readStoredSchedule(scheduler::ScheduleList& list);
