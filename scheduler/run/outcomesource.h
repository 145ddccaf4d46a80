#pragma once

#include <cstdint>
#include <string>

namespace scheduler {

struct RunOutcome {
    std::string resultText;      ///< shown in the list; empty on success
    std::uint32_t errorCode = 0; ///< 0: success
};

class OutcomeSource {
public:
    virtual ~OutcomeSource() = default;

    /// Reads and deletes the outcome that the spider left for a run. Success if there is none.
    virtual RunOutcome take(std::uint32_t runNumber) = 0;
};

} // namespace scheduler
