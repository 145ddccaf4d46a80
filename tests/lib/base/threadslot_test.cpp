#include "lib/base/threads.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/runonthread.h"

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace {

/// Set to refuse only the next request for a slot, because the runtime library needs slots, too.
bool refuses = false;
int refusals = 0;
struct Refusal {
    Refusal() { refuses = true; }
} armed [[gnu::init_priority(65534)]];

DWORD WINAPI slotUnlessRefused() {
    // Not static, because guarding its initialisation would need a slot.
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

TEST(ThreadSlot, ThreadsShareTheMainThreadsBuffersWithoutASlot) {
    EXPECT_EQ(refusals, 1);
    std::set<void*> ring;
    for (int i = 0; i < 16; ++i)
        ring.insert(scratchBuffer(10));
    EXPECT_EQ(ring.size(), 16U);
    void* buffer = nullptr;
    ASSERT_TRUE(test::runOnThread([&] { buffer = scratchBuffer(10); }));
    EXPECT_TRUE(ring.contains(buffer));
}

} // namespace
} // namespace base
