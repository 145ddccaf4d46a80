#pragma once

#include <windows.h>

#include <cstdint>

namespace test {

/// Tries every handle value below 0x2000, because Wine's GetProcessHandleCount returns 0.
inline unsigned handleCount() {
    unsigned count = 0;
    for (std::uintptr_t value = 4; value < 0x2000; value += 4) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) ? 1U : 0U;
    }
    return count;
}

} // namespace test
