// Running something on a thread of its own and waiting for its end.
#pragma once

#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/support/patience.h"

#include <windows.h>

#include <functional>

namespace test {

/// Runs `work` on a thread of base::startThread and waits until that thread is gone, its ring with it.
inline bool runOnThread(const std::function<void()>& work) {
    struct Call {
        const std::function<void()>& work;
        base::KernelHandle started{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
        base::KernelHandle thread{};
    } call{work};
    const std::uintptr_t result = base::startThread(
        [](void* argument) {
            auto& c = *static_cast<Call*>(argument);
            // The runtime closes its own handle as soon as the thread ends, so the test needs one more.
            DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), c.thread.receive(),
                            0, FALSE, DUPLICATE_SAME_ACCESS);
            SetEvent(c.started.get());
            c.work();
        },
        &call);
    return result != base::threadFailed &&
           WaitForSingleObject(call.started.get(), patience) == WAIT_OBJECT_0 &&
           WaitForSingleObject(call.thread.get(), patience) == WAIT_OBJECT_0;
}

} // namespace test
