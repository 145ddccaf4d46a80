#include "scheduler/run/outcomes.h"

#include "lib/base/registry.h"

#include <windows.h>

namespace scheduler {

namespace {

// The keys are named with the backslash that separates them from a value's name; the platform deletes a key
// by its bare name.
void deleteKeyNamed(std::string key) {
    key.pop_back();
    // Nothing to delete is no failure: the spider need not have left anything.
    base::deleteKey(HKEY_LOCAL_MACHINE, key);
}

} // namespace

std::string outcomeKey(std::uint32_t runNumber) {
    return outcomesKey + "Schedule" + std::to_string(runNumber) + '\\';
}

RunOutcome RegistryOutcomes::take(std::uint32_t runNumber) {
    const std::string key = outcomeKey(runNumber);
    RunOutcome outcome{base::getString(HKEY_LOCAL_MACHINE, key + "Result"),
                       base::getNumber(HKEY_LOCAL_MACHINE, key + "Error", 0)};
    // Run numbers are used again: what stayed here would become the outcome of a later run.
    deleteKeyNamed(key);
    return outcome;
}

void RegistryOutcomes::discardAll() {
    deleteKeyNamed(outcomesKey);
}

} // namespace scheduler
