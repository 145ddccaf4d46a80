#include "tests/support/allocations.h"

#include <cstdlib>
#include <new>

// Not inlined: otherwise the compiler would warn about mismatched pairs of new and delete.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++test::allocationCount;
    test::allocatedBytes += size;
    void* memory = size >= test::refusedSize ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

// The sanitizers' nothrow operator does not call the operator above.
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
