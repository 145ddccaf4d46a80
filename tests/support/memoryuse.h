#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

namespace test {

/// Bytes of one type: MEM_PRIVATE for allocated memory, MEM_MAPPED for mapped files.
inline std::size_t committedBytes(DWORD type) {
    std::size_t total = 0;
    MEMORY_BASIC_INFORMATION region{};
    const char* at = nullptr;
    while (VirtualQuery(at, &region, sizeof region) != 0) {
        if (region.State == MEM_COMMIT && region.Type == type)
            total += region.RegionSize;
        const char* const next = static_cast<const char*>(region.BaseAddress) + region.RegionSize;
        if (reinterpret_cast<std::uintptr_t>(next) <= reinterpret_cast<std::uintptr_t>(at))
            break; // wrapped around the address space
        at = next;
    }
    return total;
}

} // namespace test
