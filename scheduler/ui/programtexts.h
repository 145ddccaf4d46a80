// The program's title, with and without its state.
#pragma once

#include "lib/base/base.h"

#include <string>

namespace scheduler {

/// Title of the window and tip of the icon.
inline std::string titleFor(bool suspended) {
    return suspended ? base::applicationName + " (suspended)" : base::applicationName;
}

} // namespace scheduler
