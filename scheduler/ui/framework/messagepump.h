// The message pump that drives the main loop and every modal loop, and the idle pass behind user actions.
#pragma once

#include <windows.h>

#include <functional>

namespace framework {

class Window;

/// The pump of the user-interface thread.
class MessagePump {
public:
    static MessagePump& instance();

    /// The program's accelerator table, tried on every keyboard message that no modal window took.
    void setAccelerators(HACCEL accelerators) { accelerators_ = accelerators; }

    /// Sees each message between its translation and its dispatch: the hint window closes itself on input by
    /// it.
    void setInputObserver(std::function<void(const MSG&)> observer) { inputObserver_ = std::move(observer); }

    /// Has the idle pass run once the queue is empty. For what the user did by a message that was sent, which
    /// the pump never sees: controls tell their dialogs so.
    void requestIdlePass() { idlePassWanted_ = true; }

    /// Runs until the program is told to quit; returns the exit code.
    int runMainLoop();

    /// Runs until `window` says that it is finished; returns its result. When the program is told to quit
    /// meanwhile, the loop ends and leaves the quit to the loop around it.
    int runModalLoop(Window& window);

private:
    MessagePump() = default;

    /// Waits for one message and deals with it. False when the loop has to end.
    [[nodiscard]] bool pumpOne(MSG& message, Window* modal);
    void dispatch(MSG& message);
    void runIdlePass();

    HACCEL accelerators_ = nullptr;
    std::function<void(const MSG&)> inputObserver_;
    bool idlePassWanted_ = false;
};

/// Whether a message stands for something after which the enabled state of controls may have to change.
[[nodiscard]] bool wantsIdlePass(UINT message);

} // namespace framework
