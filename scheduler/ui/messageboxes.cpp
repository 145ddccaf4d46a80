#include "scheduler/ui/messageboxes.h"

#include "lib/base/base.h"

namespace scheduler {
namespace {

int show(HWND owner, const std::string& text, UINT flags) {
    return MessageBoxA(owner, text.c_str(), base::applicationName.c_str(), flags);
}

} // namespace

void MessageBoxes::showError(const std::string& text) {
    show(activeWindowOr(owner_), text, MB_OK | MB_ICONERROR);
}

void MessageBoxes::showNotice(const std::string& text) {
    show(owner_, text, MB_OK);
}

HWND activeWindowOr(HWND mainWindow) {
    const HWND active = GetActiveWindow();
    return active ? active : GetLastActivePopup(mainWindow);
}

bool askYesNo(HWND mainWindow, const std::string& text) {
    return show(activeWindowOr(mainWindow), text, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

} // namespace scheduler
