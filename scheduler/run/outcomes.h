// What the spider leaves behind in the registry when a run is over.
#pragma once

#include "scheduler/run/outcomesource.h"

#include <cstdint>
#include <string>

namespace scheduler {

/// Under the local machine: the key that holds the outcome keys of all runs.
inline const std::string outcomesKey = "SOFTWARE\\Brindlewood\\Corvane Scheduler\\";

/// The key, below the local machine, in which the spider leaves "Result" (a text, empty when all went well)
/// and "Error" (a number, 0 when all went well) of the run with this number.
std::string outcomeKey(std::uint32_t runNumber);

/// Reads outcomes from the registry and deletes their keys.
class RegistryOutcomes : public OutcomeSource {
public:
    RunOutcome take(std::uint32_t runNumber) override;

    /// Deletes what runs have left that ended while no scheduler was there to read it.
    static void discardAll();
};

} // namespace scheduler
