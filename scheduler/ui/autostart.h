#pragma once

namespace scheduler {

/// Adds or removes the program's start with "/s" at log-on. Registry errors are ignored.
void applyAutostart(bool wanted);

} // namespace scheduler
