#include "scheduler/ui/framework/controlhost.h"

#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/control.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/textextent.h"

#include <algorithm>
#include <exception>

namespace framework {
namespace {

Control* controlOf(HWND window) {
    return dynamic_cast<Control*>(Window::of(window));
}

} // namespace

void ControlHost::start(HWND dialog) {
    started_ = false;
    if (!attach(dialog))
        return;
    for (Control* control : controls_)
        static_cast<void>(control->attachIn(dialog));
    widenTruncatedTexts(dialog);
    load();
    updateState();
    started_ = true;
}

void ControlHost::load() {
    for (Control* control : controls_)
        if (control->handle())
            control->load();
}

void ControlHost::store() {
    for (Control* control : controls_)
        if (control->handle())
            control->store();
}

bool ControlHost::check() {
    return std::ranges::all_of(controls_, [](Control* control) {
        return !control->handle() || !control->isVisible() || !control->isEnabled() || control->check();
    });
}

bool ControlHost::updateAndCheck() {
    onIdle();
    return check();
}

void ControlHost::onIdle() {
    for (Control* control : controls_)
        if (control->handle())
            control->onIdle();
    updateState();
}

bool ControlHost::onCommand(int, UINT) {
    return false;
}

Handled ControlHost::onMessage(const Message& message) {
    if (message.id == WM_COMMAND || message.id == WM_NOTIFY)
        MessagePump::instance().requestIdlePass();
    switch (message.id) {
    case WM_COMMAND: {
        const UINT code = HIWORD(message.wParam);
        if (onCommand(LOWORD(message.wParam), code))
            return 0;
        Control* control = controlOf(reinterpret_cast<HWND>(message.lParam));
        if (control && control->onNotification(code))
            return 0;
        return std::nullopt;
    }
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam);
        Control* control = controlOf(item.hwndItem);
        if (control && control->onDrawItem(item))
            return TRUE;
        return std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

void ControlHost::enableItem(int id, bool enabled) {
    enableWindow(GetDlgItem(handle(), id), enabled);
}

void ControlHost::showItem(int id, bool visible) {
    showWindow(GetDlgItem(handle(), id), visible);
}

CALLED_BY_PLATFORM INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT id, WPARAM, LPARAM lParam) noexcept {
    if (id != WM_INITDIALOG)
        return FALSE;
    try {
        reinterpret_cast<ControlHost*>(lParam)->start(dialog);
    } catch (const std::exception& failure) {
        OutputDebugStringA(failure.what());
    }
    return TRUE; // the platform focuses the first control
}

} // namespace framework
