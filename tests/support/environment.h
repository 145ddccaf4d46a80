// What the caller says to a test through the environment.
#pragma once

#include <cstdlib>

namespace test {

inline unsigned long environmentNumber(const char* variable, unsigned long otherwise) {
    const char* const text = std::getenv(variable);
    return text ? std::strtoul(text, nullptr, 10) : otherwise;
}

} // namespace test
