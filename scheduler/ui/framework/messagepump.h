#pragma once

#include <windows.h>

#include <functional>

namespace framework {

class Window;

/// The message loops of the user-interface thread, with idle passes after user input.
class MessagePump {
public:
    static MessagePump& instance();

    /// Used for keyboard messages that no modal window handled.
    void setAccelerators(HACCEL accelerators) { accelerators_ = accelerators; }

    /// Called for each message between its translation and its dispatch. Hints close on input this way.
    void setInputObserver(std::function<void(const MSG&)> observer) { inputObserver_ = std::move(observer); }

    /// For input that bypasses the pump because it is sent, such as a control's notification to its dialog.
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

/// Whether the state of controls may have to change after such a message.
[[nodiscard]] bool wantsIdlePass(UINT message);

} // namespace framework
