// Keeps out of a thread's windows what the platform only ever sends.
//
// Any other process can post it: a notification whose address means nothing here, or the death of a window
// that goes on living. It is taken from the thread's queue as WM_NULL.
#pragma once

#include <windows.h>

namespace framework {

/// For the own loop, on each message that it takes.
void nullIfSentOnly(MSG& message);

/// For the platform's loops, those of message boxes, menus and controls: while one exists, whatever loop the
/// thread runs takes such messages as WM_NULL. The platform asks it about each message, at several times the
/// price of taking one: too much for a program that only waits.
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
