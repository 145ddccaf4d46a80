// The object behind a window: bound to it at birth, unbound at its death, and in between given its messages.
#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace framework {

class WindowClass;
class Window;

/// One message on its way through an object's handlers.
struct Message {
    UINT id = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

/// The answer of a handler: the message's result, or nothing when it is left to the next one.
using Handled = std::optional<LRESULT>;

/// Sees an object's messages before the object does. Not owned by it.
class MessageFilter {
public:
    virtual ~MessageFilter() = default;
    virtual Handled filterMessage(Window& window, const Message& message) = 0;
};

/// What a window is created with, beside its class.
struct WindowParameters {
    DWORD extendedStyle = 0;
    std::string title;
    DWORD style = 0;
    int x = CW_USEDEFAULT; // pixels, relative to the parent's client area for a child
    int y = CW_USEDEFAULT;
    int width = CW_USEDEFAULT;
    int height = CW_USEDEFAULT;
    HWND parent = nullptr;
    HMENU menuOrId = nullptr; ///< a menu, or a child window's control id
};

/// Base of all windows, dialogs and controls that the program handles.
///
/// An object has one owner and is bound to at most one window. The window may die first (the object then has
/// no handle) or the object (it destroys the window that it created, and lets go of one that it was attached
/// to). A handler may destroy its own object. For the user-interface thread.
class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    HWND handle() const { return handle_; }

    /// Creates a window of the given class and binds this object to it from its first message on. False when
    /// the platform refuses.
    [[nodiscard]] bool create(WindowClass& windowClass, const WindowParameters& parameters);

    /// Binds this object to a window that exists, unless another object has it: false then.
    [[nodiscard]] bool attach(HWND window);

    /// The object of a window; null when it has none. A window whose procedure is not the framework's never
    /// has.
    static Window* of(HWND window);

    /// Offers every message to `filter` before this object sees it, the filter added last first.
    void addFilter(MessageFilter& filter);
    void removeFilter(MessageFilter& filter);

    /// Ends the modal loop that runs for this object, with the given result.
    void endModal(int result);
    void beginModal();
    int modalResult() const { return modalResult_; }

    // What the framework calls and derived classes change, in the order in which a window lives through it.

    /// The object has just been attached, or its window created.
    virtual void onAttached() {}

    /// The queue is empty after something that the user did: bring the enabled state of controls up to date.
    virtual void onIdle() {}

    /// First refusal of each message that is pumped while this object is modal: true when it dealt with it.
    [[nodiscard]] virtual bool preTranslate(MSG&) { return false; }

    virtual bool isModalFinished() const { return modalFinished_; }

    /// The window procedure proper.
    virtual Handled onMessage(const Message&) { return std::nullopt; }

    /// A WM_NOTIFY that this control sent to its parent, which left it alone.
    virtual Handled onReflectedNotify(const NMHDR&) { return std::nullopt; }

    /// The number of the dialog template that dialogs and pages are made from; 0 for other windows.
    virtual int templateId() const { return 0; }

private:
    friend LRESULT CALLBACK windowProcedure(HWND, UINT, WPARAM, LPARAM) noexcept;
    class Dispatch;

    void bind(HWND window);
    void unbind();

    HWND handle_ = nullptr;
    bool created_ = false;
    std::vector<MessageFilter*> filters_;
    bool modalFinished_ = false;
    int modalResult_ = 0;
};

/// The procedure of every window that has an object.
LRESULT CALLBACK windowProcedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

/// Of a whole window, frame included, in pixels.
SIZE sizeOf(HWND window);

/// Centres a window over its parent's rectangle, or over the desktop when it has no parent.
void centreWindow(HWND window);

} // namespace framework
