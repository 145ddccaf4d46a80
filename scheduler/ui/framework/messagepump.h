#pragma once

#include <windows.h>

#include <functional>

namespace framework {

class Window;

/// The message loops of the user-interface thread. They run an idle pass after messages that may change
/// controls.
class MessagePump {
public:
    static MessagePump& instance();

    /// Used for keyboard messages that no modal window handled.
    void setAccelerators(HACCEL accelerators) { accelerators_ = accelerators; }

    /// Called before each message is dispatched. Hints use it to close on input.
    void setInputObserver(std::function<void(const MSG&)> observer) { inputObserver_ = std::move(observer); }

    /// Call for sent messages, which bypass the pump, such as a control's notification to its dialog.
    void requestIdlePass() { idlePassWanted_ = true; }

    /// Runs until the quit message; returns the exit code.
    int runMainLoop();

    /// Runs until `window` is finished and returns its result. A quit message ends the outer loops, too.
    int runModalLoop(Window& window);

private:
    MessagePump() = default;

    /// Waits for a message and handles it. False when the loop must end.
    [[nodiscard]] bool pumpOne(MSG& message, Window* modal);
    void dispatch(MSG& message);
    void runIdlePass();

    HACCEL accelerators_ = nullptr;
    std::function<void(const MSG&)> inputObserver_;
    bool idlePassWanted_ = false;
};

/// Whether controls may have to be updated after this message.
[[nodiscard]] bool wantsIdlePass(UINT message);

} // namespace framework
