#include "lib/base/threads.h"

#include "lib/base/sourceregistration.h"
#include "lib/base/stackalignment.h"

#include <windows.h>

#include <process.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

/// Holds the ring of each thread that startThread started.
const DWORD ringSlot = TlsAlloc();

constinit ScratchRing programRing;

constinit std::atomic<std::uint32_t> allocationCount = 0;

struct ThreadStart {
    ThreadFunction function;
    void* argument;
};

CALLED_BY_PLATFORM void runThread(void* parameter) {
    ScratchRing ring;
    TlsSetValue(ringSlot, &ring);
    const std::unique_ptr<const ThreadStart> start(static_cast<const ThreadStart*>(parameter));
    if (!start)
        return;
    try {
        start->function(start->argument);
    } catch (...) {
        // An exception that left this function would end the program.
    }
}

} // namespace

std::uintptr_t startThread(ThreadFunction function, void* argument) {
    // If this allocation fails, the thread starts but does nothing.
    auto start = std::unique_ptr<ThreadStart>(new (std::nothrow) ThreadStart{function, argument});
    const std::uintptr_t thread = _beginthread(runThread, 0, start.get());
    if (thread != threadFailed)
        static_cast<void>(start.release()); // owned by the thread now
    return thread;
}

void* ScratchRing::buffer(std::size_t size) {
    constexpr std::uint64_t alwaysKept = 2048;
    const std::uint64_t wanted = size;
    void*& slotBuffer = buffers_[next_];
    std::uint32_t& slotSize = sizes_[next_];
    next_ = (next_ + 1) % slotCount;
    if (slotSize < wanted || (slotSize > alwaysKept && slotSize > wanted + wanted / 2)) {
        allocationCount.fetch_add(1, std::memory_order_relaxed);
        std::free(slotBuffer);
        slotBuffer = std::malloc(size);
        // Set even if the allocation failed, on purpose: the slot then returns null for requests of this size
        // without asking the heap again.
        slotSize = static_cast<std::uint32_t>(size);
    }
    return slotBuffer;
}

void ScratchRing::clear() {
    for (void* slotBuffer : buffers_)
        std::free(slotBuffer);
    buffers_ = {};
    sizes_ = {};
    next_ = 0;
}

void* scratchBuffer(std::size_t size) {
    auto* const ring = static_cast<ScratchRing*>(TlsGetValue(ringSlot));
    return (ring ? *ring : programRing).buffer(size);
}

std::uint32_t scratchAllocationCount() {
    return allocationCount.load(std::memory_order_relaxed);
}

} // namespace base
