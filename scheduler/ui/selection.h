#pragma once

#include <cstddef>
#include <vector>

namespace scheduler {

/// The entries that a command acts on: positions in the schedule, ascending, each once.
using Selection = std::vector<std::size_t>;

} // namespace scheduler
