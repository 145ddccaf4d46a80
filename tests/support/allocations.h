// Replaces the program's allocation functions, so that a test can count allocations or have them refused. For
// one source file of a test program.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace test {

inline std::atomic<std::size_t> allocationCount = 0;
inline std::atomic<std::size_t> allocatedBytes = 0; ///< in all, whatever was freed since
inline std::atomic<std::size_t> deallocationCount = 0;
inline constexpr std::size_t nothingRefused = static_cast<std::size_t>(-1);
inline std::atomic<std::size_t> refusedSize = nothingRefused; ///< from this size on, allocations fail

/// How many blocks of memory are held.
inline std::size_t heldBlocks() {
    return allocationCount - deallocationCount;
}

/// While one lives, every allocation of at least so many bytes fails.
class RefusedAllocations {
public:
    explicit RefusedAllocations(std::size_t bytes = 0) { refusedSize = bytes; }
    ~RefusedAllocations() { refusedSize = nothingRefused; }
    RefusedAllocations(const RefusedAllocations&) = delete;
    RefusedAllocations& operator=(const RefusedAllocations&) = delete;
};

} // namespace test

// Inlined, the pairs would look mismatched to the compiler.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++test::allocationCount;
    test::allocatedBytes += size;
    void* memory = size >= test::refusedSize ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

// The runtime's own would do the same, a sanitizer's would not.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    test::deallocationCount += memory != nullptr;
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
