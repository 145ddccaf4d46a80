#include "scheduler/ui/framework/placement.h"

#include <cstring>

namespace framework {
namespace {

static_assert(sizeof(WINDOWPLACEMENT) == 44 && sizeof(WINDOWPLACEMENT) <= sizeof(base::WindowState));

/// `place` is relative to the work area, not to the monitor. A taskbar can make their origins differ.
bool overlapsWorkArea(RECT place) {
    const HMONITOR monitor = MonitorFromRect(&place, MONITOR_DEFAULTTONULL);
    if (!monitor)
        return false;
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    RECT common{};
    if (!GetMonitorInfoA(monitor, &info))
        return false;
    OffsetRect(&place, info.rcWork.left - info.rcMonitor.left, info.rcWork.top - info.rcMonitor.top);
    return IntersectRect(&common, &place, &info.rcWork);
}

bool asksForNormalWindow(int showCommand) {
    return showCommand == SW_SHOWNORMAL || showCommand == SW_SHOWDEFAULT || showCommand == SW_SHOW;
}

} // namespace

base::WindowState capturePlacement(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof(placement);
    GetWindowPlacement(window, &placement);
    base::WindowState bytes{};
    std::memcpy(bytes.data(), &placement, sizeof(placement));
    return bytes;
}

bool applyPlacement(HWND window, const base::WindowState& bytes, int& showCommand) {
    WINDOWPLACEMENT placement{};
    std::memcpy(&placement, bytes.data(), sizeof(placement));
    if (placement.length != sizeof(placement) || !overlapsWorkArea(placement.rcNormalPosition))
        return false;
    const bool wasMaximised = placement.showCmd == SW_SHOWMAXIMIZED;
    placement.showCmd = SW_HIDE;
    placement.flags = 0;
    if (!SetWindowPlacement(window, &placement))
        return false;
    if (wasMaximised && asksForNormalWindow(showCommand))
        showCommand = SW_SHOWMAXIMIZED;
    return true;
}

} // namespace framework
