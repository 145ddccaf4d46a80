#include "scheduler/ui/dialogs.h"

#include "scheduler/ui/aboutdialog.h"
#include "scheduler/ui/messageboxes.h"
#include "scheduler/ui/preferencesdialog.h"
#include "scheduler/ui/scheduleeditor.h"

namespace scheduler {
namespace {

/// Whether the dialog with this result ended with OK.
bool isOk(int result, HWND owner) {
    if (result == framework::notMade) {
        MessageBoxes messages;
        messages.setOwner(owner);
        messages.showError("A system error prevented the dialog from opening.");
    }
    return result == IDOK;
}

} // namespace

std::optional<EditedEntry> editEntry(HWND owner, const ScheduledProject& record, const ScheduleList& schedule,
                                     std::optional<std::size_t> position, const base::Clock& clock) {
    EditedEntry edited{record, {}};
    ScheduleEditor editor(edited.record, schedule, position, clock);
    editor.setMultiSelect(!position);
    if (!isOk(editor.run(position ? "Edit Scheduled Task" : "Add Scheduled Project", owner), owner))
        return std::nullopt;
    edited.files = editor.chosenFiles();
    return edited;
}

bool editPreferences(HWND owner, Preferences& preferences) {
    return isOk(PreferencesDialog(preferences).runModal(owner), owner);
}

void showAbout(HWND owner) {
    isOk(AboutDialog().runModal(owner), owner);
}

} // namespace scheduler
