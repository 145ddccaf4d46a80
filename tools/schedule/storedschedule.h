#pragma once

#include "scheduler/model/schedulelist.h"

/// Fills `list` from the schedule file. False if there is no file, or if the scheduler is writing it.
bool readStoredSchedule(scheduler::ScheduleList& list);
