// Keeps out of a thread's windows what the platform only ever sends.
#pragma once

#include <windows.h>

namespace framework {

/// While it exists, messages that the platform only sends are taken from the thread's queue as WM_NULL, in
/// whatever loop. Any other process can post them: a notification whose address means nothing here, or the
/// death of a window that goes on living.
class SentOnlyGuard {
public:
    SentOnlyGuard();
    ~SentOnlyGuard();
    SentOnlyGuard(const SentOnlyGuard&) = delete;
    SentOnlyGuard& operator=(const SentOnlyGuard&) = delete;

private:
    HHOOK hook_;
};

} // namespace framework
