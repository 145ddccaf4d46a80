#pragma once

#include "lib/base/registrystore.h"
#include "lib/base/windowstate.h"
#include "scheduler/model/runpolicy.h"

#include <cstdint>
#include <string>

namespace scheduler {

struct Preferences : RunPolicy {
    base::WindowState windowState{};
    bool autostart = true;

    friend bool operator==(const Preferences&, const Preferences&) = default;
};

inline const std::string stateSection = "State";

/// The current user's "Software\<vendor>\<program>\<section>". <program> is the program's file name in lower
/// case, without extension.
base::RegistryStore appRegistryKey(const std::string& section);

/// A missing setting keeps its value in `preferences`. True only if every read succeeded.
[[nodiscard]] bool loadPreferences(base::RegistryStore& store, Preferences& preferences);

[[nodiscard]] bool savePreferences(base::RegistryStore& store, const Preferences& preferences);

/// Saves to the registry. A failure is ignored: the next save tries again.
void storePreferences(const Preferences& preferences);

} // namespace scheduler
