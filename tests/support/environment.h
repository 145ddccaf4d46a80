// Settings from the environment: SCHEDULER_SEED is the only seed to use, SCHEDULER_SEEDS the number of seeds.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <optional>
#include <vector>

namespace test {

/// Empty if the text is null or does not start with a number.
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

/// Only `alone` if set, otherwise 1 to `number`.
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
