// What a worker thread needs to know of the run it supervises.
#pragma once

#include <cstdint>
#include <string>

namespace scheduler {

/// Made by the engine; owned by the worker thread from the moment it starts.
struct RunRequest {
    std::string commandLine;
    std::uint32_t runNumber = 0;
};

} // namespace scheduler
