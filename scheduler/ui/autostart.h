#pragma once

namespace scheduler {

/// Sets whether Windows starts the program with "/s" at log-on. Registry errors are ignored.
void applyAutostart(bool wanted);

} // namespace scheduler
