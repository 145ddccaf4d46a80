#include "scheduler/run/outcomes.h"

#include "lib/base/registry.h"

#include <windows.h>

namespace scheduler {

namespace {

// Outcome keys end in a backslash, which separates them from a value's name. The platform deletes a key by
// its name without the backslash.
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
    // A missing key is no failure: the spider need not have left one.
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
    // Run numbers are reused: an outcome left here would become that of a later run. So it is deleted even if
    // there is no memory to read it.
    const KeyRemoval removal(key);
    return {base::getString(HKEY_LOCAL_MACHINE, key + "Result"),
            base::getNumber(HKEY_LOCAL_MACHINE, key + "Error", 0)};
}

void RegistryOutcomes::discardAll() {
    const KeyRemoval removal(outcomesKey);
}

} // namespace scheduler
