// The program-wide settings and the main window's saved state, kept in the current user's registry.
#pragma once

#include "lib/base/registrystore.h"
#include "lib/base/windowstate.h"
#include "scheduler/model/runpolicy.h"

#include <cstdint>
#include <string>

namespace scheduler {

struct Preferences : RunPolicy {
    base::WindowState windowState{}; ///< the main window's; the window framework knows what it means
    bool autostart = true;           ///< the program registers itself to start at log-on
};

/// The section of the program's registry key that holds the preferences and the window's state.
inline const std::string stateSection = "State";

/// The store "Software\<maker>\<program's file name in lower case>\<section>" of the current user.
base::RegistryStore appRegistryKey(const std::string& section);

/// Reads each setting by itself: one that is missing keeps its value in `preferences`. True only when every
/// read succeeded.
[[nodiscard]] bool loadPreferences(base::RegistryStore& store, Preferences& preferences);

/// True only when every write succeeded.
[[nodiscard]] bool savePreferences(base::RegistryStore& store, const Preferences& preferences);

/// Saves to the section "State". A refusal of the registry is ignored: the next save tries again.
void storePreferences(const Preferences& preferences);

} // namespace scheduler
