#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace base {

using ThreadFunction = void (*)(void* argument);

inline constexpr std::uintptr_t threadFailed = static_cast<std::uintptr_t>(-1);

/// Runs function(argument) on a new thread. The function owns `argument`. If memory runs out, the thread may
/// do nothing. Returns a handle that the runtime closes, or threadFailed.
std::uintptr_t startThread(ThreadFunction function, void* argument);

/// Hands out sixteen buffers in turn, so each is valid during the next fifteen requests. For one thread.
class [[nodiscard]] ScratchRing {
public:
    ScratchRing() = default;
    ~ScratchRing() { clear(); }
    ScratchRing(const ScratchRing&) = delete;
    ScratchRing& operator=(const ScratchRing&) = delete;

    /// At least `size` bytes, uninitialised; null if memory runs out. A buffer above 2048 bytes is reused
    /// only for requests of two thirds of its size or more, so that one large request does not hold memory
    /// for ever. After a failed allocation, requests that the buffer would have served get null.
    void* buffer(std::size_t size);

    void clear();

private:
    static constexpr std::size_t slotCount = 16;

    std::array<void*, slotCount> buffers_{};
    std::array<std::uint32_t, slotCount> sizes_{};
    std::size_t next_ = 0;
};

/// A buffer of the calling thread's ring. Threads that startThread did not start share the main thread's
/// ring, without a lock. If no thread-local slot was free at the program's start, all threads share it.
void* scratchBuffer(std::size_t size);

std::uint32_t scratchAllocationCount();

} // namespace base
