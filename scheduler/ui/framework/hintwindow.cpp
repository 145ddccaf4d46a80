#include "scheduler/ui/framework/hintwindow.h"

#include "scheduler/ui/framework/gdihandles.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/windowclass.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace framework {
namespace {

constexpr UINT_PTR displayTimer = 1;

using Hints = std::vector<std::unique_ptr<HintWindow>>;

/// A hint whose window was destroyed together with the owner's stays in this list until the next message.
Hints& shownHints() {
    static Hints hints;
    return hints;
}

WindowClass& hintClass() {
    static WindowClass windowClass = [] {
        WindowClass described;
        described.description().style = CS_SAVEBITS;
        described.description().hbrBackground = nullptr; // WM_PAINT fills the whole window
        return described;
    }();
    return windowClass;
}

bool closesHint(UINT message) {
    return message == WM_CHAR || message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN ||
           message == WM_MBUTTONDOWN || message == WM_MOUSELEAVE;
}

bool pointerIsInside(HWND window) {
    RECT place{};
    POINT pointer{};
    return GetWindowRect(window, &place) && GetCursorPos(&pointer) && PtInRect(&place, pointer);
}

void trackLeave(HWND window) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof(track);
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = window;
    TrackMouseEvent(&track);
}

/// Tracks the window under the pointer if it is the owner or a child. If another window were tracked, the
/// platform would report at once that the mouse has left.
void trackLeaveOf(HWND owner) {
    POINT pointer{};
    GetCursorPos(&pointer);
    const HWND under = WindowFromPoint(pointer);
    if (under == owner || IsChild(owner, under))
        trackLeave(under);
}

} // namespace

HintWindow::~HintWindow() {
    if (Window* owner = Window::of(owner_))
        owner->removeFilter(*this);
    // Wine does not free a destroyed window's region.
    if (handle())
        SetWindowRgn(handle(), nullptr, FALSE);
}

bool HintWindow::show(Window* owner, const Hint& hint) {
    removeClosedHints();
    const HWND window = owner ? owner->handle() : nullptr;
    const auto belongsToOwner = [&](const auto& other) { return other->owner_ == window; };
    if (hint.text.empty())
        return false;
    if (owner && (!pointerIsInside(window) || std::ranges::any_of(shownHints(), belongsToOwner)))
        return false;
    std::unique_ptr<HintWindow> created(new HintWindow(window, hint));
    if (!created->open(hint))
        return false;
    if (owner)
        owner->addFilter(*created);
    shownHints().push_back(std::move(created));
    MessagePump::instance().setInputObserver(&observeInput);
    return true;
}

void HintWindow::dismiss(const Window& owner) {
    for (const auto& hint : shownHints())
        if (hint->owner_ && hint->owner_ == owner.handle())
            hint->postClose();
}

bool HintWindow::open(const Hint& hint) {
    RECT workArea{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &workArea, 0);
    const RECT place = hintRectangle(hintExtent(text_, style_, maxHintWidth(workArea)), hint.point, workArea);
    WindowParameters parameters;
    parameters.extendedStyle = WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST;
    parameters.style = WS_POPUP;
    parameters.x = place.left;
    parameters.y = place.top;
    parameters.width = place.right - place.left;
    parameters.height = place.bottom - place.top;
    parameters.parent = owner_;
    if (!create(hintClass(), parameters))
        return false;
    // The window takes ownership of the region.
    SetWindowRgn(handle(), hintOutline(style_, {parameters.width, parameters.height}), FALSE);
    SetTimer(handle(), displayTimer, hint.displayMilliseconds, nullptr);
    // Track before showing the hint, which may appear under the pointer.
    if (owner_)
        trackLeaveOf(owner_);
    ShowWindow(handle(), SW_SHOWNOACTIVATE);
    return true;
}

Handled HintWindow::onMessage(const Message& message) {
    switch (message.id) {
    case WM_NCHITTEST:
        return owner_ ? Handled(HTTRANSPARENT) : std::nullopt;
    case WM_TIMER:
        if (message.wParam != displayTimer)
            return std::nullopt;
        KillTimer(handle(), displayTimer);
        postClose();
        return 0;
    case WM_CLOSE:
        close(); // destroys this object
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT:
        paint();
        return 0;
    case WM_MOUSEMOVE:
        if (!owner_)
            trackLeave(handle());
        return std::nullopt;
    default:
        if (!owner_ && closesHint(message.id))
            postClose();
        return std::nullopt;
    }
}

/// Sees the owner's input, also in the platform's loops (menus, message boxes).
Handled HintWindow::filterMessage(Window&, const Message& message) {
    if (closesHint(message.id) || message.id == WM_DESTROY)
        postClose();
    return std::nullopt;
}

/// Sees the input of the owners' child windows, which the filters do not see.
void HintWindow::observeInput(const MSG& message) {
    removeClosedHints();
    if (!closesHint(message.message))
        return;
    for (const auto& hint : shownHints())
        if (hint->owner_ && IsChild(hint->owner_, message.hwnd))
            hint->postClose();
}

void HintWindow::postClose() {
    // With a null handle, the message would go to the thread.
    if (handle())
        PostMessageA(handle(), WM_CLOSE, 0, 0);
}

void HintWindow::close() {
    Hints& hints = shownHints();
    const auto place = std::ranges::find(hints, this, &std::unique_ptr<HintWindow>::get);
    if (place == hints.end())
        return;
    // Removed from the list first, because destroying the hint may show another one.
    const std::unique_ptr<HintWindow> closing = std::move(*place);
    hints.erase(place);
}

/// Removes hints whose window or owner no longer exists.
void HintWindow::removeClosedHints() {
    Hints& hints = shownHints();
    const auto isDead = [](const auto& hint) { return !hint->handle() || hint->isOrphaned(); };
    // Must not allocate: handling a message must not fail. Each hint leaves the list before it is destroyed.
    for (;;) {
        const auto dead = std::ranges::find_if(hints, isDead);
        if (dead == hints.end())
            return;
        const std::unique_ptr<HintWindow> dropped = std::move(*dead);
        hints.erase(dead);
    }
}

void HintWindow::paint() {
    PAINTSTRUCT painted{};
    const HDC window = BeginPaint(handle(), &painted);
    RECT client{};
    GetClientRect(handle(), &client);
    {
        const MemoryContext memory(CreateCompatibleDC(window));
        const Bitmap bitmap(CreateCompatibleBitmap(window, client.right, client.bottom));
        const Selection surface(memory.get(), bitmap.get());
        drawHint(memory.get(), client, text_, style_);
        BitBlt(window, 0, 0, client.right, client.bottom, memory.get(), 0, 0, SRCCOPY);
    }
    EndPaint(handle(), &painted);
}

} // namespace framework
