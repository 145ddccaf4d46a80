#pragma once

#include "scheduler/ui/framework/messagepump.h"
#include "tests/scheduler/ui/framework/probewindow.h"

namespace test {

/// Dispatches all waiting messages except those that `modal` translates, then runs one idle pass.
inline void pumpUntilIdle(framework::Window* modal = nullptr) {
    constexpr UINT passWanted = WM_APP + 1;
    constexpr UINT passDone = WM_APP + 2;
    ProbeWindow asking;
    asking.open(WS_POPUP);
    asking.idled = [&] { PostMessageA(asking.handle(), passDone, 0, 0); };
    asking.translator = [&](MSG& message) {
        if (message.hwnd != asking.handle() || message.message != passDone)
            return modal && modal->preTranslate(message);
        asking.endModal(0);
        return true;
    };
    PostMessageA(asking.handle(), passWanted, 0, 0);
    framework::MessagePump::instance().runModalLoop(asking);
}

inline void typeInto(HWND window, const char* text) {
    for (; *text; ++text) {
        PostMessageA(window, WM_CHAR, static_cast<WPARAM>(*text), 1);
        pumpUntilIdle();
    }
}

} // namespace test
