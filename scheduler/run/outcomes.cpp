#include "scheduler/run/outcomes.h"

#include "lib/base/registry.h"

#include <windows.h>

namespace scheduler {

namespace {

// The keys are named with the backslash that separates them from a value's name; the platform deletes a key
// by its bare name.
std::string bareName(std::string key) {
    key.pop_back();
    return key;
}

/// Deletes a key when its life ends, however that comes about.
class KeyRemoval {
public:
    explicit KeyRemoval(const std::string& key) : name_(bareName(key)) {}
    KeyRemoval(const KeyRemoval&) = delete;
    KeyRemoval& operator=(const KeyRemoval&) = delete;
    // Nothing to delete is no failure: the spider need not have left anything.
    ~KeyRemoval() { static_cast<void>(base::deleteKey(HKEY_LOCAL_MACHINE, name_)); }

private:
    std::string name_;
};

} // namespace

std::string outcomeKey(std::uint32_t runNumber) {
    return outcomesKey + "Schedule" + std::to_string(runNumber) + '\\';
}

RunOutcome RegistryOutcomes::take(std::uint32_t runNumber) {
    const std::string key = outcomeKey(runNumber);
    // Run numbers are used again: what stayed here would become the outcome of a later run. So it goes, too,
    // when there is no memory to read it into.
    const KeyRemoval removal(key);
    return {base::getString(HKEY_LOCAL_MACHINE, key + "Result"),
            base::getNumber(HKEY_LOCAL_MACHINE, key + "Error", 0)};
}

void RegistryOutcomes::discardAll() {
    const KeyRemoval removal(outcomesKey);
}

} // namespace scheduler
