#include "scheduler/ui/messageboxes.h"

#include "lib/base/base.h"

namespace scheduler {
namespace {

int show(HWND owner, const std::string& text, UINT flags) {
    return MessageBoxA(owner, text.c_str(), base::applicationName.c_str(), flags);
}

} // namespace

void MessageBoxes::showError(const std::string& text) {
    show(GetActiveWindow(), text, MB_OK | MB_ICONERROR);
}

void MessageBoxes::showNotice(const std::string& text) {
    show(owner_, text, MB_OK);
}

bool askYesNo(const std::string& text) {
    return show(GetActiveWindow(), text, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

} // namespace scheduler
