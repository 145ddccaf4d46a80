#include "scheduler/ui/programexit.h"

#include "lib/base/scopedflag.h"
#include "scheduler/ui/autostart.h"
#include "scheduler/ui/messageboxes.h"

namespace scheduler {

const char* const exitQuestion = "The Scheduler will not be able to launch projects if you exit.  You can "
                                 "choose \"Close\" to hide the main "
                                 "window and still leave the program active.  Are you sure you want to exit?";

void ProgramExit::exitProgram(ExitMode mode) {
    if (mode == ExitMode::AskFirst && !confirm())
        return;
    parts_.presence.hide();
    parts_.icon.remove();
    save();
    applyAutostart(parts_.preferences.autostart);
    EndMenu(); // the loop of an open one would swallow the quit
    PostQuitMessage(0);
}

void ProgramExit::onSessionEnd() {
    // Saved before anything is asked: the platform may end the process while the question stands, and it may
    // do so as soon as this message is answered, which is at once when the question stands already.
    parts_.presence.rememberPlace();
    save();
    parts_.history.note(ProgramEvent::SessionEnd);
    exitProgram(ExitMode::AskFirst);
}

bool ProgramExit::confirm() {
    // A second request while the question stands is the same question.
    if (asking_)
        return false;
    if (!parts_.schedule.hasPendingRun())
        return true;
    const base::ScopedFlag asking(asking_);
    return askYesNo(parts_.presence.window(), exitQuestion);
}

void ProgramExit::save() const {
    base::RegistryStore store = appRegistryKey(stateSection);
    parts_.list.saveColumns(store);
    storePreferences(parts_.preferences);
    parts_.store.save(parts_.schedule);
}

} // namespace scheduler
