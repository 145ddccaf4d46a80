// The preferences that rule the engine.
#pragma once

#include <cstdint>

namespace scheduler {

struct RunPolicy {
    bool suspended = false;      ///< no entry is started
    std::uint32_t waitTime = 20; ///< minutes that a due entry waits for a running project; not checked
    bool runMultiple = false;    ///< due entries start beside a running project
};

} // namespace scheduler
