// The program's names as the user sees them.
#pragma once

#include <string>

namespace scheduler {

/// The program's title: see base::applicationName, which it is put into at the start.
inline const std::string programTitle = "Corvane Scheduler";

/// Title of the window and tip of the icon.
inline std::string titleFor(bool suspended) {
    return suspended ? programTitle + " (suspended)" : programTitle;
}

} // namespace scheduler
