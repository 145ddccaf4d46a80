// The program-wide settings and the main window's saved state, kept in the current user's registry.
#pragma once

#include "lib/base/registrystore.h"
#include "scheduler/model/runpolicy.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace scheduler {

/// The main window's saved state as opaque bytes; the window framework knows what they mean.
using WindowState = std::array<std::byte, 61>;

struct Preferences : RunPolicy {
    WindowState windowState{};
    bool autostart = true; ///< the program registers itself to start at log-on
};

/// The section of the program's registry key that holds the preferences and the window's state.
inline const std::string stateSection = "State";

/// The store "Software\<maker>\<program's file name in lower case>\<section>" of the current user.
base::RegistryStore appRegistryKey(const std::string& section);

/// Reads each setting by itself: one that is missing keeps its value in `preferences`. True only when every
/// read succeeded.
bool loadPreferences(base::RegistryStore& store, Preferences& preferences);

/// True only when every write succeeded.
bool savePreferences(base::RegistryStore& store, const Preferences& preferences);

} // namespace scheduler
