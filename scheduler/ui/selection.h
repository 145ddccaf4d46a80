// The entries that a command acts on.
#pragma once

#include <cstddef>
#include <vector>

namespace scheduler {

/// Positions in the schedule, ascending, each once.
using Selection = std::vector<std::size_t>;

} // namespace scheduler
