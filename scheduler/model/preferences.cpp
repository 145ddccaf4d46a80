#include "scheduler/model/preferences.h"

#include "lib/base/base.h"
#include "lib/base/formatting.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/strings.h"

#include <cstring>

namespace scheduler {
namespace {

const std::string& programName() {
    static const std::string name = [] {
        std::string lowered = base::baseNameOf(base::executablePath());
        base::toLower(lowered);
        return lowered;
    }();
    return name;
}

bool readWindowState(const base::RegistryStore& store, base::WindowState& state) {
    std::string bytes;
    if (!store.readBinaryHere(bytes) || bytes.size() < state.size())
        return false;
    std::memcpy(state.data(), bytes.data(), state.size());
    return true;
}

/// Passes the name and the field of each number to `visit`, in the order of their registry accesses.
template<class Record, class Visitor>
void visitNumbers(Record& preferences, Visitor&& visit) {
    visit("Suspended", preferences.suspended);
    visit("WaitTime", preferences.waitTime);
    visit("RunMultiple", preferences.runMultiple);
    visit("Autostart", preferences.autostart);
}

} // namespace

base::RegistryStore appRegistryKey(const std::string& section) {
    return {HKEY_CURRENT_USER,
            base::format("Software\\%s\\%s\\%s", base::vendorName, programName(), section)};
}

bool loadPreferences(base::RegistryStore& store, Preferences& preferences) {
    bool all = readWindowState(store, preferences.windowState);
    visitNumbers(preferences, [&]<class Value>(const char* name, Value& value) {
        std::uint32_t number = value;
        all &= store.readNumber(name, number);
        value = static_cast<Value>(number);
    });
    return all;
}

bool savePreferences(base::RegistryStore& store, const Preferences& preferences) {
    const base::WindowState& state = preferences.windowState;
    bool all = store.writeBinaryHere({reinterpret_cast<const char*>(state.data()), state.size()});
    visitNumbers(preferences,
                 [&](const char* name, std::uint32_t value) { all &= store.writeNumber(name, value); });
    return all;
}

void storePreferences(const Preferences& preferences) {
    base::RegistryStore store = appRegistryKey(stateSection);
    static_cast<void>(savePreferences(store, preferences));
}

} // namespace scheduler
