#include "scheduler/ui/dialogs.h"

#include "scheduler/ui/aboutdialog.h"
#include "scheduler/ui/preferencesdialog.h"

namespace scheduler {

std::optional<EditedEntry> editEntry(HWND, const ScheduledProject&, const ScheduleList&,
                                     std::optional<std::size_t>) {
    return std::nullopt;
}

bool editPreferences(HWND owner, Preferences& preferences) {
    return PreferencesDialog(preferences).runModal(owner) == IDOK;
}

void showAbout(HWND owner) {
    AboutDialog().runModal(owner);
}

} // namespace scheduler
