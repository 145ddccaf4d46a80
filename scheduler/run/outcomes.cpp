#include "scheduler/run/outcomes.h"

#include "lib/base/registry.h"

#include <windows.h>

namespace scheduler {

namespace {

// Outcome keys end in a backslash so that a value's name can follow. Keys are deleted by the name without it.
std::string bareName(std::string key) {
    key.pop_back();
    return key;
}

/// Deletes a key when destroyed.
class KeyRemoval {
public:
    explicit KeyRemoval(const std::string& key) : name_(bareName(key)) {}
    KeyRemoval(const KeyRemoval&) = delete;
    KeyRemoval& operator=(const KeyRemoval&) = delete;
    // The key may be missing: not every run leaves an outcome.
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
    // Deletes the outcome even if reading it runs out of memory. Run numbers are reused, so a later run would
    // otherwise get this outcome.
    const KeyRemoval removal(key);
    return {base::getString(HKEY_LOCAL_MACHINE, key + "Result"),
            base::getNumber(HKEY_LOCAL_MACHINE, key + "Error", 0)};
}

void RegistryOutcomes::discardAll() {
    const KeyRemoval removal(outcomesKey);
}

} // namespace scheduler
