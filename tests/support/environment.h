// What the caller says to a test through the environment.
#pragma once

#include <cstdlib>
#include <optional>

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

} // namespace test
