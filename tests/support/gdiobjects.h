#pragma once

#include <windows.h>

#include <cstdint>

namespace test {

/// Falls back to trying every table index, because Wine's GetGuiResources returns 0.
inline unsigned gdiObjectCount() {
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return count;
    unsigned count = 0;
    for (std::uintptr_t index = 1; index < 0x4000; ++index)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(index)) != 0;
    return count;
}

} // namespace test
