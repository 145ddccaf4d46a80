// The platform has no thread-local slot left: threads start all the same, and their buffers are those of the
// main thread.

#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <utility>

namespace {

/// The runtime library needs slots, too: only the one is refused that is asked for while the program's own
/// variables are made, right behind this one, which is made before them.
bool refuses = false;
int refusals = 0;
struct Refusal {
    Refusal() { refuses = true; }
} armed [[gnu::init_priority(65534)]];

DWORD WINAPI slotUnlessRefused() {
    // Not kept: to make a static variable is one of the things that the runtime library needs a slot for.
    const auto original = test::platformFunction<decltype(&TlsAlloc)>("kernel32.dll", "TlsAlloc");
    if (!std::exchange(refuses, false))
        return original();
    ++refusals;
    return TLS_OUT_OF_INDEXES;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(TlsAlloc, "_TlsAlloc@0", slotUnlessRefused);

namespace base {
namespace {

TEST(ThreadSlot, WithoutOneThreadsStartAndShareTheMainThreadsBuffers) {
    EXPECT_EQ(refusals, 1);
    std::set<void*> ring;
    for (int i = 0; i < 16; ++i)
        ring.insert(scratchBuffer(10));
    EXPECT_EQ(ring.size(), 16U);

    struct Call {
        void* buffer = nullptr;
        KernelHandle done{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    } call;
    ASSERT_NE(startThread(
                  [](void* argument) {
                      auto& c = *static_cast<Call*>(argument);
                      c.buffer = scratchBuffer(10);
                      std::memset(c.buffer, 'x', 10);
                      SetEvent(c.done.get());
                  },
                  &call),
              threadFailed);
    ASSERT_EQ(WaitForSingleObject(call.done.get(), test::patience), WAIT_OBJECT_0);
    EXPECT_TRUE(ring.contains(call.buffer));
}

} // namespace
} // namespace base
