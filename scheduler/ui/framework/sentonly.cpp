#include "scheduler/ui/framework/sentonly.h"

#include "lib/base/stackalignment.h"

namespace framework {
namespace {

/// The others that carry addresses are ones that the platform itself refuses to post.
bool isSentOnly(UINT message) {
    return message == WM_NOTIFY || message == WM_DESTROY || message == WM_NCDESTROY;
}

CALLED_BY_PLATFORM LRESULT CALLBACK onTaken(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION)
        nullIfSentOnly(*reinterpret_cast<MSG*>(lParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

void nullIfSentOnly(MSG& message) {
    if (isSentOnly(message.message))
        message.message = WM_NULL;
}

SentOnlyGuard::SentOnlyGuard()
    : hook_(SetWindowsHookExA(WH_GETMESSAGE, &onTaken, nullptr, GetCurrentThreadId())) {}

SentOnlyGuard::~SentOnlyGuard() {
    if (hook_)
        UnhookWindowsHookEx(hook_);
}

} // namespace framework
