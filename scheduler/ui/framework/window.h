#pragma once

#include "lib/base/handles.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace framework {

class WindowClass;
class Window;

struct Message {
    UINT id = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

/// A handler's result for a message; empty passes the message on.
using Handled = std::optional<LRESULT>;

/// Sees a window's messages before the window does. Not owned by the window.
class MessageFilter {
public:
    virtual ~MessageFilter() = default;
    virtual Handled filterMessage(Window& window, const Message& message) = 0;
};

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

/// Base of all windows, dialogs and controls. Bound to at most one window; if the window is destroyed first,
/// the handle is null. The destructor destroys a created window and detaches from an attached one.
/// A handler may destroy its own object. For the user-interface thread.
class Window {
public:
    Window() = default;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    HWND handle() const { return handle_; }

    /// Creates a window that is bound from WM_NCCREATE on. False on failure.
    [[nodiscard]] bool create(WindowClass& windowClass, const WindowParameters& parameters);

    /// Binds this object to an existing window. False if the window is null or already bound.
    [[nodiscard]] bool attach(HWND window);

    /// The object bound to a window. Null if there is none or the window's procedure was replaced.
    static Window* of(HWND window);

    /// The filter added last sees a message first.
    void addFilter(MessageFilter& filter);
    void removeFilter(MessageFilter& filter);

    void endModal(int result);
    void beginModal();
    int modalResult() const { return modalResult_; }

    // Called by the framework, for derived classes to override.

    /// After the window was attached or created.
    virtual void onAttached() {}

    /// After messages that may change controls, once the queue is empty. Updates the state of controls.
    virtual void onIdle() {}

    /// Sees each queued message first while this object is modal. True if handled.
    [[nodiscard]] virtual bool preTranslate(MSG&) { return false; }

    virtual bool isModalFinished() const { return modalFinished_; }

    virtual Handled onMessage(const Message&) { return std::nullopt; }

    /// A WM_NOTIFY from this control that its parent did not handle.
    virtual Handled onReflectedNotify(const NMHDR&) { return std::nullopt; }

    /// The id of the dialog's or page's template; 0 for other windows.
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

LRESULT CALLBACK windowProcedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) noexcept;

/// In pixels, including the frame.
SIZE sizeOf(HWND window);

/// Centres a window over its parent or owner; if it has neither, over the desktop.
void centreWindow(HWND window);

} // namespace framework
