// A small schedule that has something to show within seconds.
#pragma once

#include <string>

/// Writes sample projects into `folder`, which is made if need be, and replaces the schedule of this Windows
/// with one of three entries: a project and a command line that are due in `seconds`, and a project that
/// follows the first. The scheduler has to be started before: what is due earlier never runs. False when a
/// file could not be written.
bool writeSample(const std::string& folder, unsigned seconds = 8);
