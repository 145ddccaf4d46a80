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

/// A tool tip of our own, transparent to the mouse if it has an owner. Closes after a time, on keys or mouse
/// buttons, and when the mouse leaves. (It watches the owner and its children or, without an owner, itself.)
/// The class owns all hints. Each lives until its window closes or its owner's window or object is destroyed.
class HintWindow : public Window, private MessageFilter {
public:
    ~HintWindow() override;

    /// False if the text is empty, or if the owner (unless null) has a hint or the pointer is outside it.
    [[nodiscard]] static bool show(Window* owner, const Hint& hint);

    /// Closes the owner's hint, if any.
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

    HWND owner_; // a handle, not a pointer, to tell whether the owner is gone; null: none
    std::string text_;
    HintStyle style_;
};

} // namespace framework
