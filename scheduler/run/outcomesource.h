// How runs ended, as those see it who record it.
#pragma once

#include <cstdint>
#include <string>

namespace scheduler {

/// How a run ended.
struct RunOutcome {
    std::string resultText;      ///< what the list shows; empty when all went well
    std::uint32_t errorCode = 0; ///< 0 = success
};

/// What the spider leaves behind.
class OutcomeSource {
public:
    virtual ~OutcomeSource() = default;

    /// Reads and deletes the outcome of the run with this number. A good outcome when there is none.
    virtual RunOutcome take(std::uint32_t runNumber) = 0;
};

} // namespace scheduler
