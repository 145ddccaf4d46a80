#include "scheduler/ui/framework/window.h"

#include "lib/base/opsys.h"
#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/sentonly.h"
#include "scheduler/ui/framework/windowclass.h"

#include <algorithm>
#include <exception>
#include <optional>

namespace framework {

/// A message being handled. Nested messages form a chain. Destroying a Window clears the pointers to it.
class Window::Dispatch {
public:
    explicit Dispatch(Window* window) : window_(window), outer_(innermost_) { innermost_ = this; }
    Dispatch(const Dispatch&) = delete;
    Dispatch& operator=(const Dispatch&) = delete;
    ~Dispatch() { innermost_ = outer_; }

    Handled run(const Message& message) {
        // Filters may be added or removed during the calls: call each initial filter once, unless removed.
        const std::vector<MessageFilter*> filters = window_->filters_;
        for (auto filter = filters.rbegin(); filter != filters.rend() && window_; ++filter) {
            if (std::ranges::find(window_->filters_, *filter) == window_->filters_.end())
                continue;
            if (const Handled handled = (*filter)->filterMessage(*window_, message))
                return handled;
        }
        const Handled handled = window_ ? window_->onMessage(message) : std::nullopt;
        return !handled && message.id == WM_NOTIFY ? reflect(message) : handled;
    }

    static Handled reflect(const Message& message) {
        const NMHDR& notification = *reinterpret_cast<const NMHDR*>(message.lParam);
        Window* const control = Window::of(notification.hwndFrom);
        return control ? control->onReflectedNotify(notification) : std::nullopt;
    }

    /// Catches exceptions, which must not cross the platform's frames. The default procedure then handles
    /// the message, except WM_CLOSE, where it would destroy the window.
    Handled runSafely(const Message& message) noexcept {
        try {
            return run(message);
        } catch (const std::exception& failure) {
            OutputDebugStringA(failure.what());
            return message.id == WM_CLOSE ? Handled(0) : std::nullopt;
        }
    }

    bool windowIsAlive() const { return window_ != nullptr; }

    static void forget(const Window* window) {
        for (Dispatch* frame = innermost_; frame; frame = frame->outer_)
            if (frame->window_ == window)
                frame->window_ = nullptr;
    }

private:
    Window* window_;
    Dispatch* outer_;

    static inline Dispatch* innermost_ = nullptr;
};

namespace {

// Addresses are stored in window longs, which requires a 32-bit target.
static_assert(sizeof(LONG) == sizeof(void*));

const LONG frameworkProcedure = reinterpret_cast<LONG>(&windowProcedure);

LRESULT callDefaultProcedure(HWND window, const Message& message) {
    const auto classProcedure = reinterpret_cast<WNDPROC>(GetClassLongA(window, GCL_WNDPROC));
    if (!classProcedure || classProcedure == &windowProcedure)
        return DefWindowProcA(window, message.id, message.wParam, message.lParam);
    return CallWindowProcA(classProcedure, window, message.id, message.wParam, message.lParam);
}

Window* objectFor(HWND window, const Message& message) {
    if (message.id == WM_NCCREATE || message.id == WM_CREATE)
        return static_cast<Window*>(reinterpret_cast<const CREATESTRUCTA*>(message.lParam)->lpCreateParams);
    return Window::of(window);
}

} // namespace

Window::~Window() {
    Dispatch::forget(this);
    if (!handle_)
        return;
    const HWND window = handle_;
    unbind();
    if (created_)
        DestroyWindow(window);
    else
        SetWindowLongA(window, GWL_WNDPROC, static_cast<LONG>(GetClassLongA(window, GCL_WNDPROC)));
}

bool Window::create(WindowClass& windowClass, const WindowParameters& parameters) {
    windowClass.registerOnce();
    created_ = true;
    const HWND window =
        CreateWindowExA(parameters.extendedStyle, windowClass.name().c_str(), parameters.title.c_str(),
                        parameters.style, parameters.x, parameters.y, parameters.width, parameters.height,
                        parameters.parent, parameters.menuOrId, base::moduleHandle(), this);
    if (!window)
        return false;
    onAttached();
    return true;
}

bool Window::attach(HWND window) {
    if (!window || GetWindowLongA(window, GWL_USERDATA) != 0)
        return false;
    bind(window);
    SetWindowLongA(window, GWL_WNDPROC, frameworkProcedure);
    onAttached();
    return true;
}

Window* Window::of(HWND window) {
    if (!window || GetWindowLongA(window, GWL_WNDPROC) != frameworkProcedure)
        return nullptr;
    return reinterpret_cast<Window*>(GetWindowLongA(window, GWL_USERDATA));
}

void Window::addFilter(MessageFilter& filter) {
    filters_.push_back(&filter);
}

void Window::removeFilter(MessageFilter& filter) {
    std::erase(filters_, &filter);
}

void Window::beginModal() {
    modalFinished_ = false;
    modalResult_ = 0;
}

void Window::endModal(int result) {
    modalFinished_ = true;
    modalResult_ = result;
}

void Window::bind(HWND window) {
    handle_ = window;
    SetWindowLongA(window, GWL_USERDATA, reinterpret_cast<LONG>(this));
}

void Window::unbind() {
    SetWindowLongA(handle_, GWL_USERDATA, 0);
    handle_ = nullptr;
}

CALLED_BY_PLATFORM LRESULT CALLBACK windowProcedure(HWND window, UINT id, WPARAM wParam,
                                                    LPARAM lParam) noexcept {
    const Message message{id, wParam, lParam};
    // Messages from other threads bypass the pump's guard. Their handlers may run the platform's loops, too.
    std::optional<SentOnlyGuard> guard;
    if (InSendMessage())
        guard.emplace();
    if (Window* object = objectFor(window, message)) {
        if (!object->handle_)
            object->bind(window);
        Window::Dispatch dispatch(object);
        const Handled handled = dispatch.runSafely(message);
        if (id == WM_NCDESTROY && dispatch.windowIsAlive())
            object->unbind();
        if (handled)
            return *handled;
    }
    return callDefaultProcedure(window, message);
}

SIZE sizeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

void centreWindow(HWND window) {
    const HWND parent = GetParent(window);
    RECT reference{};
    GetWindowRect(parent ? parent : GetDesktopWindow(), &reference);
    const SIZE own = sizeOf(window);
    const int x = (reference.left + reference.right) / 2 - own.cx / 2;
    const int y = (reference.top + reference.bottom) / 2 - own.cy / 2;
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace framework
