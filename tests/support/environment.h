// What the caller says to a test through the environment. SCHEDULER_SEED has a test draw its cases from that
// seed alone, SCHEDULER_SEEDS from so many instead of the usual number.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <vector>

namespace test {

/// Nothing when there is no text, or no number at its beginning.
inline std::optional<unsigned long> numberIn(const char* text) {
    if (!text)
        return std::nullopt;
    char* end = nullptr;
    const unsigned long number = std::strtoul(text, &end, 10);
    return end != text ? std::optional(number) : std::nullopt;
}

inline std::optional<unsigned long> environmentNumber(const char* variable) {
    return numberIn(std::getenv(variable));
}

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
