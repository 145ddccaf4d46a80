#include "scheduler/ui/framework/sentonly.h"

#include "lib/base/stackalignment.h"

namespace framework {
namespace {

/// The platform itself refuses to post the other messages that contain addresses.
bool isSentOnly(UINT message) {
    return message == WM_NOTIFY || message == WM_DESTROY || message == WM_NCDESTROY;
}

CALLED_BY_PLATFORM LRESULT CALLBACK onGetMessage(int code, WPARAM wParam, LPARAM lParam) noexcept {
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
    : hook_(SetWindowsHookExA(WH_GETMESSAGE, &onGetMessage, nullptr, GetCurrentThreadId())) {}

SentOnlyGuard::~SentOnlyGuard() {
    if (hook_)
        UnhookWindowsHookEx(hook_);
}

} // namespace framework
