#include "lib/base/trayicon.h"

#include "lib/base/opsys.h"
#include "lib/base/sourceregistration.h"

#include <windows.h>

#include <shellapi.h>

#include <cstring>
#include <map>

namespace base {
namespace {

[[maybe_unused]] const bool registered = registerSourceFile(__FILE__, RELEASE_DATE);

constexpr std::size_t maxTipLength = 63;

/// Null if the program has no such icon.
HICON loadedIcon(std::uint16_t resource) {
    static std::map<std::uint16_t, HICON> icons;
    if (const auto known = icons.find(resource); known != icons.end())
        return known->second;
    const HANDLE icon = LoadImageA(moduleHandle(), MAKEINTRESOURCEA(resource), IMAGE_ICON, 16, 16, 0);
    if (!icon)
        return nullptr;
    return icons.emplace(resource, static_cast<HICON>(icon)).first->second;
}

bool showIcon(DWORD message, UINT flags, HWND window, std::uint16_t iconResource, const std::string& tip) {
    if (!window)
        return false;
    const HICON icon = loadedIcon(iconResource);
    if (!icon)
        return false;
    NOTIFYICONDATAA record = detail::trayIconRecord(window, flags, icon, tip);
    return Shell_NotifyIconA(message, &record);
}

} // namespace

namespace detail {

NOTIFYICONDATAA trayIconRecord(HWND window, UINT flags, HICON icon, const std::string& tip) {
    NOTIFYICONDATAA record{};
    record.cbSize = NOTIFYICONDATAA_V1_SIZE; // the shell then reads no more than 64 characters of the tip
    record.hWnd = window;
    record.uFlags = flags;
    if (flags & NIF_MESSAGE)
        record.uCallbackMessage = WM_TRAY_NOTIFY;
    record.hIcon = icon;
    tip.copy(record.szTip, maxTipLength);
    return record;
}

} // namespace detail

bool addTrayIcon(HWND window, std::uint16_t iconResource, const std::string& tip) {
    return showIcon(NIM_ADD, NIF_MESSAGE | NIF_ICON | NIF_TIP, window, iconResource, tip);
}

bool modifyTrayIcon(HWND window, std::uint16_t iconResource, const std::string& tip) {
    return showIcon(NIM_MODIFY, NIF_ICON | NIF_TIP, window, iconResource, tip);
}

bool removeTrayIcon(HWND window) {
    NOTIFYICONDATAA record = detail::trayIconRecord(window, 0, nullptr, {});
    return Shell_NotifyIconA(NIM_DELETE, &record);
}

bool showTrayBalloon(HWND window, const std::string& title, const std::string& text) {
    NOTIFYICONDATAA record = detail::trayIconRecord(window, NIF_INFO, nullptr, {});
    record.cbSize = NOTIFYICONDATAA_V2_SIZE; // version 1 has no balloon
    record.dwInfoFlags = NIIF_WARNING;
    title.copy(record.szInfoTitle, sizeof(record.szInfoTitle) - 1);
    constexpr std::size_t maxLength = sizeof(record.szInfo) - 1;
    text.copy(record.szInfo, maxLength);
    if (text.size() > maxLength) // the dots must not split a two-byte character
        std::memcpy(CharPrevA(record.szInfo, record.szInfo + maxLength - 2), "...", sizeof("..."));
    return Shell_NotifyIconA(NIM_MODIFY, &record);
}

} // namespace base
