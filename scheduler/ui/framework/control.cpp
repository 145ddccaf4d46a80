#include "scheduler/ui/framework/control.h"

#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/strings.h"
#include "scheduler/ui/framework/controlhost.h"

#include <array>

namespace framework {
namespace {

bool hasStyle(HWND window, DWORD style) {
    return (static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)) & style) != 0;
}

} // namespace

Control::Control(ControlHost& host, int id) : host_(host), id_(id) {
    host_.add(*this);
}

Control::~Control() {
    host_.remove(*this);
}

bool Control::attachIn(HWND dialog) {
    return attach(GetDlgItem(dialog, id_));
}

bool Control::isVisible() const {
    // Not IsWindowVisible, which is false while the control's page is hidden.
    return hasStyle(handle(), WS_VISIBLE);
}

bool Control::isEnabled() const {
    return !hasStyle(handle(), WS_DISABLED);
}

bool Control::onNotification(UINT) {
    return false;
}

bool Control::onDrawItem(const DRAWITEMSTRUCT&) {
    return false;
}

void Control::setEnabled(bool enabled) {
    enableWindow(handle(), enabled);
}

void Control::setVisible(bool visible) {
    showWindow(handle(), visible);
}

void Control::setText(const std::string& newText) {
    if (text() != newText)
        SetWindowTextA(handle(), newText.c_str());
}

std::string Control::text() const {
    return base::windowText(handle());
}

void Control::reportInvalid(const std::string& message) {
    const HWND dialog = GetParent(handle());
    host_.reveal();
    MessageBoxA(dialog, message.c_str(), base::applicationName.c_str(), MB_OK);
    // Focuses the control and selects its text, as the Tab key does.
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(handle()), TRUE);
}

Handled Control::onMessage(const Message& message) {
    if (message.id == WM_ENABLE)
        enableWindow(labelOf(handle()), message.wParam != FALSE);
    return std::nullopt;
}

LRESULT Control::send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(handle(), message, wParam, lParam);
}

void enableWindow(HWND window, bool enabled) {
    if (hasStyle(window, WS_DISABLED) == enabled)
        EnableWindow(window, enabled);
}

void showWindow(HWND window, bool visible) {
    if (hasStyle(window, WS_VISIBLE) != visible)
        ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
}

bool isOfClass(HWND window, const char* className) {
    std::array<char, 32> actual{};
    GetClassNameA(window, actual.data(), static_cast<int>(actual.size()));
    return base::compareNoCase(actual.data(), className) == 0;
}

HWND labelOf(HWND control) {
    const HWND before = GetWindow(control, GW_HWNDPREV);
    const bool isLabel =
        isOfClass(before, "static") && base::windowText(before).find('&') != std::string::npos;
    return isLabel ? before : nullptr;
}

} // namespace framework
