#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace test {

/// Bytes in all used blocks of all heaps. Regions reserved for small blocks count in full.
inline std::size_t heapBytesInUse() {
    std::array<HANDLE, 16> heaps{};
    const DWORD room = static_cast<DWORD>(heaps.size());
    std::size_t total = 0;
    for (const HANDLE heap : std::span(heaps).first(std::min(GetProcessHeaps(room, heaps.data()), room))) {
        HeapLock(heap);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry))
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                total += entry.cbData;
        HeapUnlock(heap);
    }
    return total;
}

} // namespace test
