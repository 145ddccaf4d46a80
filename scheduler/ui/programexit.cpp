#include "scheduler/ui/programexit.h"

#include "scheduler/ui/autostart.h"
#include "scheduler/ui/messageboxes.h"

namespace scheduler {

void ProgramExit::exitProgram(ExitMode mode) {
    if (mode == ExitMode::AskFirst && !confirm())
        return;
    parts_.presence.hide();
    parts_.icon.remove();
    saveState();
    parts_.store.save(parts_.schedule);
    applyAutostart(parts_.preferences.autostart);
    PostQuitMessage(0);
}

bool ProgramExit::confirm() {
    // A second request while the question stands is the same question.
    if (asking_)
        return false;
    if (!hasPendingRun(parts_.schedule))
        return true;
    asking_ = true;
    const bool confirmed = askYesNo(exitQuestion);
    asking_ = false;
    return confirmed;
}

void ProgramExit::saveState() const {
    base::RegistryStore store = appRegistryKey(stateSection);
    parts_.list.saveColumns(store);
    savePreferences(store, parts_.preferences);
}

} // namespace scheduler
