#include "scheduler/ui/notificationicon.h"

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/ui/programtexts.h"

namespace scheduler {

NotificationIcon::~NotificationIcon() {
    if (stands_)
        remove();
}

void NotificationIcon::add(HWND window) {
    window_ = window;
    stands_ = true;
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
    stands_ = false;
    static_cast<void>(base::removeTrayIcon(window_));
}

} // namespace scheduler
