// Replaces posted messages with WM_NULL if they are only valid when sent. Another process can post a false
// WM_DESTROY, or a WM_NOTIFY with an invalid address.
#pragma once

#include <windows.h>

namespace framework {

/// Call in the program's own loops for each message from the queue.
void nullIfSentOnly(MSG& message);

/// Protects the platform's loops (message boxes, menus, controls) during its lifetime. Its hook multiplies
/// the cost of each message, so do not hold a guard while waiting for messages.
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
