#include "scheduler/ui/dialogs.h"

#include "scheduler/ui/aboutdialog.h"
#include "scheduler/ui/messageboxes.h"
#include "scheduler/ui/preferencesdialog.h"
#include "scheduler/ui/scheduleeditor.h"

namespace scheduler {
namespace {

/// Shows an error message if the dialog could not be created. Returns `result`.
int reportFailure(int result, HWND owner) {
    if (result == framework::notCreated) {
        MessageBoxes messages;
        messages.setOwner(owner);
        messages.showError("A system error prevented the dialog from opening.");
    }
    return result;
}

} // namespace

std::optional<EditedEntry> editEntry(HWND owner, const ScheduledProject& record, const ScheduleList& schedule,
                                     std::optional<std::size_t> position, const base::Clock& clock) {
    EditedEntry edited{record, {}};
    ScheduleEditor editor(edited.record, schedule, position, clock);
    editor.setMultiSelect(!position);
    if (reportFailure(editor.run(position ? "Edit Scheduled Task" : "Add Scheduled Project", owner), owner) !=
        IDOK)
        return std::nullopt;
    edited.files = editor.chosenFiles();
    return edited;
}

bool editPreferences(HWND owner, Preferences& preferences) {
    return reportFailure(PreferencesDialog(preferences).runModal(owner), owner) == IDOK;
}

void showAbout(HWND owner) {
    reportFailure(AboutDialog().runModal(owner), owner);
}

} // namespace scheduler
