// Protects against messages that are only valid when sent. Another process can post them: a WM_NOTIFY with an
// invalid address, or a false WM_DESTROY. Such posted messages are replaced by WM_NULL.
#pragma once

#include <windows.h>

namespace framework {

/// Call in our own loop for each message from the queue.
void nullIfSentOnly(MSG& message);

/// Protects the platform's loops (message boxes, menus, controls) during its lifetime. Its hook
/// multiplies the cost of each message, so do not keep one while waiting.
class [[nodiscard]] SentOnlyGuard {
public:
    SentOnlyGuard();
    ~SentOnlyGuard();
    SentOnlyGuard(const SentOnlyGuard&) = delete;
    SentOnlyGuard& operator=(const SentOnlyGuard&) = delete;

private:
    HHOOK hook_;
};

} // namespace framework
