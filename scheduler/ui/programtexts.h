#pragma once

#include "lib/base/base.h"
#include "lib/base/formatting.h"

#include <string>

namespace scheduler {

/// The window's title and the icon's tip.
inline std::string titleFor(bool suspended) {
    return suspended ? base::applicationName + " (suspended)" : base::applicationName;
}

inline std::string saveFailedText(const std::string& path, const std::string& reason) {
    return base::format(
        "The schedule could not be saved. Changes will be lost when the Scheduler exits.\n%s: %s", path,
        reason);
}

} // namespace scheduler
