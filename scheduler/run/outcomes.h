#pragma once

#include "scheduler/run/outcomesource.h"

#include <cstdint>
#include <string>

namespace scheduler {

/// Below HKEY_LOCAL_MACHINE; holds the outcome keys of all runs.
inline const std::string outcomesKey = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\";

/// Below HKEY_LOCAL_MACHINE. Values: "Result" (text, empty on success) and "Error" (number, 0 on success).
std::string outcomeKey(std::uint32_t runNumber);

class RegistryOutcomes : public OutcomeSource {
public:
    RunOutcome take(std::uint32_t runNumber) override;

    /// Deletes all outcomes. Call at program start: runs may have ended while the scheduler was not running.
    static void discardAll();
};

} // namespace scheduler
