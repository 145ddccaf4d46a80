#pragma once

#include <cstdint>

namespace scheduler {

struct RunPolicy {
    bool suspended = false;
    std::uint32_t waitTime = 20; ///< minutes that a due entry waits for running projects; not validated
    bool runMultiple = false;    ///< due entries start even while a project runs

    friend bool operator==(const RunPolicy&, const RunPolicy&) = default;
};

} // namespace scheduler
