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
    exiting_ = true;
    endLoops();
}

void ProgramExit::endLoops() {
    EndMenu(); // the loop of an open menu would discard the quit message
    PostQuitMessage(0);
}

void ProgramExit::onSessionEnd() {
    // Save before asking: the system may end the process while the question is open or after this function
    // returns. If the question is already open, exitProgram() does nothing.
    parts_.presence.storePlacement();
    save();
    parts_.history.record(ProgramEvent::SessionEnd);
    exitProgram(ExitMode::AskFirst);
}

bool ProgramExit::continueExit() {
    if (exiting_)
        endLoops();
    return exiting_;
}

bool ProgramExit::confirm() {
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
