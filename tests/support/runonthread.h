#pragma once

#include "lib/base/handles.h"
#include "lib/base/threads.h"
#include "tests/support/timeout.h"

#include <windows.h>

#include <functional>

namespace test {

/// Runs `work` on a thread of base::startThread. After wait(), the thread has freed its scratch buffers.
class ThreadRun {
public:
    explicit ThreadRun(std::function<void()> work) : work_(std::move(work)) {
        const auto run = [](void* argument) {
            auto& self = *static_cast<ThreadRun*>(argument);
            // The runtime closes its handle when the thread ends, so wait() needs a handle of its own.
            DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(),
                            self.thread_.receive(), 0, FALSE, DUPLICATE_SAME_ACCESS);
            SetEvent(self.started_.get());
            self.work_();
        };
        hasStarted_ = base::startThread(run, this) != base::threadFailed &&
                      WaitForSingleObject(started_.get(), timeout) == WAIT_OBJECT_0;
    }
    ThreadRun(const ThreadRun&) = delete;
    ThreadRun& operator=(const ThreadRun&) = delete;

    bool wait(DWORD milliseconds = timeout) const {
        return hasStarted_ && WaitForSingleObject(thread_.get(), milliseconds) == WAIT_OBJECT_0;
    }

private:
    const std::function<void()> work_;
    const base::KernelHandle started_{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    base::KernelHandle thread_;
    bool hasStarted_ = false;
};

inline bool runOnThread(const std::function<void()>& work) {
    return ThreadRun(work).wait();
}

} // namespace test
