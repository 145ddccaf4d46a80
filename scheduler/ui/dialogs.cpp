#include "scheduler/ui/dialogs.h"

#include "scheduler/ui/aboutdialog.h"
#include "scheduler/ui/preferencesdialog.h"
#include "scheduler/ui/scheduleeditor.h"

namespace scheduler {

std::optional<EditedEntry> editEntry(HWND owner, const ScheduledProject& record, const ScheduleList& schedule,
                                     std::optional<std::size_t> position) {
    EditedEntry edited{record, {}};
    ScheduleEditor editor(edited.record, schedule, position);
    editor.setMultiSelect(!position);
    if (editor.run(position ? "Edit Scheduled Task" : "Add Scheduled Project", owner) != IDOK)
        return std::nullopt;
    edited.files = editor.chosenFiles();
    return edited;
}

bool editPreferences(HWND owner, Preferences& preferences) {
    return PreferencesDialog(preferences).runModal(owner) == IDOK;
}

void showAbout(HWND owner) {
    AboutDialog().runModal(owner);
}

} // namespace scheduler
