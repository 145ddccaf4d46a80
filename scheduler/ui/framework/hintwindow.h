// A tool tip of our own: a short text below the pointer, gone by itself or at the next input.
#pragma once

#include "scheduler/ui/framework/hintface.h"
#include "scheduler/ui/framework/window.h"

#include <windows.h>

#include <string>

namespace framework {

struct Hint {
    std::string text;
    POINT point{}; ///< on the screen: what the hint stands below
    HintStyle style = HintStyle::Rounded;
    UINT displayMilliseconds = 7000;
};

/// The window of one hint. A hint with an owner lets the mouse through to it, and closes when a character is
/// typed or a mouse button pressed in the owner or its child windows, or when the mouse leaves. One without
/// an owner closes on such input of its own.
///
/// The hints that are shown belong to this class: one lives until its window is closed or its owner is gone,
/// whether that is the owner's window or only its object. For the user-interface thread.
class HintWindow : public Window, private MessageFilter {
public:
    ~HintWindow() override;

    /// False, with nothing shown, when the text is empty, or when there is an owner (null: none) and the
    /// pointer is outside its window's rectangle or it shows a hint already.
    [[nodiscard]] static bool show(Window* owner, const Hint& hint);

    /// Closes the hint that `owner` shows, if any.
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

    HWND owner_; // by its handle, which tells whether it is gone; null: none
    std::string text_;
    HintStyle style_;
};

} // namespace framework
