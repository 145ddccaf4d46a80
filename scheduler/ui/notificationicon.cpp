#include "scheduler/ui/notificationicon.h"

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/ui/popupmenus.h"
#include "scheduler/ui/programtexts.h"

namespace scheduler {
namespace {

/// A menu closes on a click elsewhere only if its window is in the foreground. A hidden window must not stay
/// in the foreground afterwards: it would receive the user's keys.
void openIconMenu(WindowPresence& presence) {
    const HWND window = presence.window();
    const HWND before = GetForegroundWindow();
    if (IsWindowVisible(window))
        presence.bringForwardIfShown();
    else
        SetForegroundWindow(window);
    trackMenu(window, IDR_TRAY_MENU);
    PostMessageA(window, WM_NULL, 0, 0);
    if (!IsWindowVisible(window) && GetForegroundWindow() == window && IsWindow(before))
        SetForegroundWindow(before);
}

} // namespace

NotificationIcon::~NotificationIcon() {
    if (added_)
        remove();
}

void NotificationIcon::add(HWND window) {
    window_ = window;
    added_ = true;
    static_cast<void>(base::addTrayIcon(window_, IDI_ACTIVE, titleFor(false)));
}

void NotificationIcon::update(bool suspended) {
    static_cast<void>(
        base::modifyTrayIcon(window_, suspended ? IDI_SUSPENDED : IDI_ACTIVE, titleFor(suspended)));
}

void NotificationIcon::restore(bool suspended) {
    add(window_);
    update(suspended);
}

void NotificationIcon::remove() {
    added_ = false;
    static_cast<void>(base::removeTrayIcon(window_));
}

void NotificationIcon::warn(const std::string& text) const {
    if (added_)
        static_cast<void>(base::showTrayBalloon(window_, base::applicationName, text));
}

void NotificationIcon::onMouse(UINT mouseMessage, WindowPresence& presence) {
    switch (mouseMessage) {
    case WM_LBUTTONDOWN:
        presence.bringForwardIfShown();
        break;
    case WM_LBUTTONDBLCLK:
        presence.show();
        break;
    case WM_RBUTTONDOWN:
        openIconMenu(presence);
        break;
    default:
        break;
    }
}

} // namespace scheduler
