// Worker threads, each with a ring of scratch buffers of its own.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace base {

using ThreadFunction = void (*)(void* argument);

/// The runtime's answer when a thread could not be started.
inline constexpr std::uintptr_t threadFailed = static_cast<std::uintptr_t>(-1);

/// Starts a thread that calls function(argument) and ends when it returns; whatever `argument` points to
/// belongs to the function. The runtime's thread handle, which is the runtime's to close, or threadFailed.
std::uintptr_t startThread(ThreadFunction function, void* argument);

/// Sixteen buffers that are handed out in turn, so that one stays valid while fifteen more are asked for.
/// For one thread.
class [[nodiscard]] ScratchRing {
public:
    ScratchRing() = default;
    ~ScratchRing() { clear(); }
    ScratchRing(const ScratchRing&) = delete;
    ScratchRing& operator=(const ScratchRing&) = delete;

    /// At least `size` bytes, uninitialised; null when memory cannot be had. A buffer above 2048 bytes is
    /// kept for requests of at least two thirds of its size only, so that one large request does not hold
    /// memory for ever. A slot whose allocation failed keeps its null in the same way.
    void* buffer(std::size_t size);

    /// Frees all buffers.
    void clear();

private:
    static constexpr std::size_t slotCount = 16;

    std::array<void*, slotCount> buffers_{};
    std::array<std::uint32_t, slotCount> sizes_{}; // in bytes
    std::size_t next_ = 0;
};

/// A buffer of the calling thread's ring, valid until the thread has asked for 16 more. Threads that
/// startThread did not start share the main thread's ring, without a lock; so do all threads when the
/// platform has no thread-local slot left at the program's start.
void* scratchBuffer(std::size_t size);

/// How many buffers all rings have allocated so far.
std::uint32_t scratchAllocationCount();

} // namespace base
