#include "scheduler/ui/framework/messagepump.h"

#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/sentonly.h"
#include "scheduler/ui/framework/window.h"

#include <optional>

namespace framework {
namespace {

// The longest delay of an idle pass requested by a sent message: sent messages do not end GetMessage.
constexpr UINT wakeUpMilliseconds = 200;

CALLED_BY_PLATFORM BOOL CALLBACK updateIdle(HWND window, LPARAM) noexcept {
    try {
        if (Window* object = Window::of(window))
            object->onIdle();
    } catch (const std::exception& failure) {
        OutputDebugStringA(failure.what());
    }
    return TRUE;
}

} // namespace

bool wantsIdlePass(UINT message) {
    switch (message) {
    case WM_SETTEXT:
    case WM_NOTIFY:
    case WM_STYLECHANGED:
    case WM_CHAR:
    case WM_COMMAND:
    case WM_PARENTNOTIFY:
        return true;
    default:
        return message >= WM_USER + 1;
    }
}

MessagePump& MessagePump::instance() {
    static MessagePump pump;
    return pump;
}

int MessagePump::runMainLoop() {
    const UINT_PTR timer = SetTimer(nullptr, 0, wakeUpMilliseconds, nullptr);
    MSG message{};
    while (pumpOne(message, nullptr))
        Sleep(0);
    KillTimer(nullptr, timer);
    return static_cast<int>(message.wParam);
}

int MessagePump::runModalLoop(Window& window) {
    MSG message{};
    while (pumpOne(message, &window))
        Sleep(0);
    if (message.message == WM_QUIT)
        PostQuitMessage(static_cast<int>(message.wParam));
    return window.modalResult();
}

bool MessagePump::pumpOne(MSG& message, Window* modal) {
    const BOOL got = GetMessageA(&message, nullptr, 0, 0);
    if (got == 0 || got == -1)
        return false;
    if (wantsIdlePass(message.message))
        idlePassWanted_ = true;
    nullIfSentOnly(message);
    {
        // Needed if the handler runs one of the platform's loops. Timer handlers never do, because a tick
        // opens nothing modal. Without a guard for them, an idle program uses less CPU time.
        std::optional<SentOnlyGuard> guard;
        if (message.message != WM_TIMER)
            guard.emplace();
        if (!modal || !modal->preTranslate(message))
            dispatch(message);
    }
    if (modal && modal->isModalFinished())
        return false;
    MSG waiting{};
    if (idlePassWanted_ && !PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE))
        runIdlePass();
    return true;
}

void MessagePump::dispatch(MSG& message) {
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    if (isKey && accelerators_ && TranslateAcceleratorA(message.hwnd, accelerators_, &message))
        return;
    TranslateMessage(&message);
    if (inputObserver_)
        inputObserver_(message);
    DispatchMessageA(&message);
}

void MessagePump::runIdlePass() {
    // Cleared first, because updating controls may request another pass.
    idlePassWanted_ = false;
    EnumThreadWindows(GetCurrentThreadId(), &updateIdle, 0);
}

} // namespace framework
