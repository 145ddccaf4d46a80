// Counts and refuses allocations. For programs that link `counted_allocations`.
#pragma once

#include <atomic>
#include <cstddef>

namespace test {

inline std::atomic<std::size_t> allocationCount = 0;
inline std::atomic<std::size_t> allocatedBytes = 0; ///< total, including freed memory
inline std::atomic<std::size_t> deallocationCount = 0;
inline constexpr std::size_t nothingRefused = static_cast<std::size_t>(-1);
inline std::atomic<std::size_t> refusedSize = nothingRefused; ///< allocations of this size or more fail

inline std::size_t heldBlocks() {
    return allocationCount - deallocationCount;
}

/// Makes allocations of `bytes` or more fail during its lifetime.
class RefusedAllocations {
public:
    explicit RefusedAllocations(std::size_t bytes = 0) { refusedSize = bytes; }
    ~RefusedAllocations() { refusedSize = nothingRefused; }
    RefusedAllocations(const RefusedAllocations&) = delete;
    RefusedAllocations& operator=(const RefusedAllocations&) = delete;
};

} // namespace test
