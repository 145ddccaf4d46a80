#pragma once

#include "scheduler/ui/framework/hintface.h"
#include "scheduler/ui/framework/window.h"

#include <windows.h>

#include <string>

namespace framework {

struct Hint {
    std::string text;
    POINT point{}; ///< screen coordinates; the hint appears below
    HintStyle style = HintStyle::Rounded;
    UINT displayMilliseconds = 7000;
};

/// A tool tip. Closes after a time, on a key or mouse button, or when the mouse leaves. With an owner, it
/// watches the input of the owner and its children, and is transparent to the mouse; else it watches its own.
/// The class owns all hints. Each lives until its window closes or its owner's window or object is destroyed.
class HintWindow : public Window, private MessageFilter {
public:
    ~HintWindow() override;

    /// False on failure, if the text is empty, or if `owner` already has a hint or is not under the pointer.
    [[nodiscard]] static bool show(Window* owner, const Hint& hint);

    static void dismiss(const Window& owner);

    Handled onMessage(const Message& message) override;

private:
    HintWindow(HWND owner, const Hint& hint) : owner_(owner), text_(hint.text), style_(hint.style) {}

    [[nodiscard]] bool open(const Hint& hint);
    void postClose();
    void close();
    void paint();
    bool isOrphaned() const { return owner_ && !Window::of(owner_); }

    Handled filterMessage(Window& owner, const Message& message) override;

    static void observeInput(const MSG& message);
    static void removeClosedHints();

    HWND owner_; // a handle, because a pointer could dangle; null: no owner
    std::string text_;
    HintStyle style_;
};

} // namespace framework
