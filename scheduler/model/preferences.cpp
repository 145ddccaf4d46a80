#include "scheduler/model/preferences.h"

#include "lib/base/base.h"
#include "lib/base/formatting.h"
#include "lib/base/opsys.h"
#include "lib/base/paths.h"
#include "lib/base/strings.h"

#include <algorithm>
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

bool writeWindowState(const base::RegistryStore& store, const base::WindowState& state) {
    return store.writeBinaryHere({reinterpret_cast<const char*>(state.data()), state.size()});
}

bool readFlag(base::RegistryStore& store, const std::string& name, bool& flag) {
    std::uint32_t value = 0;
    if (!store.readNumber(name, value))
        return false;
    flag = value != 0;
    return true;
}

} // namespace

base::RegistryStore appRegistryKey(const std::string& section) {
    return {HKEY_CURRENT_USER,
            base::format("Software\\%s\\%s\\%s", base::vendorName, programName(), section)};
}

bool loadPreferences(base::RegistryStore& store, Preferences& preferences) {
    bool all = readWindowState(store, preferences.windowState);
    all &= readFlag(store, "Suspended", preferences.suspended);
    all &= store.readNumber("WaitTime", preferences.waitTime);
    all &= readFlag(store, "RunMultiple", preferences.runMultiple);
    all &= readFlag(store, "Autostart", preferences.autostart);
    return all;
}

bool savePreferences(base::RegistryStore& store, const Preferences& preferences) {
    bool all = writeWindowState(store, preferences.windowState);
    all &= store.writeNumber("Suspended", preferences.suspended);
    all &= store.writeNumber("WaitTime", preferences.waitTime);
    all &= store.writeNumber("RunMultiple", preferences.runMultiple);
    all &= store.writeNumber("Autostart", preferences.autostart);
    return all;
}

void storePreferences(const Preferences& preferences) {
    base::RegistryStore store = appRegistryKey(stateSection);
    static_cast<void>(savePreferences(store, preferences));
}

} // namespace scheduler
