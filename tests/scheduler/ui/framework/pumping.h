// Running the program's message pump in a test until it has nothing left to do.
#pragma once

#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/framework/windowclass.h"

namespace test {

/// Ends its loop in the idle pass that it asks for itself.
class IdlePassProbe : public framework::Window {
public:
    explicit IdlePassProbe(framework::Window* modal) : modal_(modal) {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = WS_POPUP;
        create(windowClass, parameters);
        PostMessageA(handle(), passWanted, 0, 0);
    }

    void onIdle() override { PostMessageA(handle(), passDone, 0, 0); }

    bool preTranslate(MSG& message) override {
        if (message.message == passDone && message.hwnd == handle()) {
            endModal(0);
            return true;
        }
        return modal_ && modal_->preTranslate(message);
    }

private:
    static constexpr UINT passWanted = WM_APP + 1;
    static constexpr UINT passDone = WM_APP + 2;

    framework::Window* modal_;
};

/// Pumps all waiting messages, offering them to `modal` first, and lets the idle pass run once.
inline void pumpUntilIdle(framework::Window* modal = nullptr) {
    IdlePassProbe probe(modal);
    framework::MessagePump::instance().runModalLoop(probe);
}

/// Types into a window as the keyboard does, up to the idle pass behind each character.
inline void typeInto(HWND window, const char* text) {
    for (; *text; ++text) {
        PostMessageA(window, WM_CHAR, static_cast<WPARAM>(*text), 1);
        pumpUntilIdle();
    }
}

} // namespace test
