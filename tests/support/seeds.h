// What tests draw their cases from. SCHEDULER_SEED tries that one alone, SCHEDULER_SEEDS so many instead of
// the usual number.
#pragma once

#include "tests/support/environment.h"

#include <cstdint>
#include <numeric>
#include <optional>
#include <vector>

namespace test {

/// The one that is asked for, which may be 0, or else those from 1 to the number.
inline std::vector<std::uint32_t> seedsFor(std::optional<unsigned long> alone, unsigned long number) {
    if (alone)
        return {static_cast<std::uint32_t>(*alone)};
    std::vector<std::uint32_t> all(number);
    std::iota(all.begin(), all.end(), 1U);
    return all;
}

inline std::vector<std::uint32_t> seeds(unsigned long usualNumber) {
    return seedsFor(environmentNumber("SCHEDULER_SEED"),
                    environmentNumber("SCHEDULER_SEEDS").value_or(usualNumber));
}

} // namespace test
