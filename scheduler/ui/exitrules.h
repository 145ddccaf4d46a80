// Leaving the program.
#pragma once

#include "scheduler/model/schedulelist.h"

namespace scheduler {

/// Whether the user is asked before the program ends.
enum class ExitMode { AskFirst, WithoutAsking };

/// Whether an enabled entry still has a next run, so that it would be missed.
[[nodiscard]] bool hasPendingRun(const ScheduleList& schedule);

/// The question that is asked then.
extern const char* const exitQuestion;

} // namespace scheduler
