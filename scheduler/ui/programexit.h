#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "scheduler/run/runhistory.h"
#include "scheduler/ui/notificationicon.h"
#include "scheduler/ui/schedulelistview.h"
#include "scheduler/ui/windowpresence.h"

namespace scheduler {

enum class ExitMode { AskFirst, WithoutAsking };

/// Asked before the exit if an enabled entry has a next run.
extern const char* const exitQuestion;

/// The objects that exiting uses. Not owned; must outlive ProgramExit.
struct ExitParts {
    const ScheduleList& schedule;
    ScheduleStore& store;
    const Preferences& preferences;
    const ScheduleListView& list;
    NotificationIcon& icon;
    WindowPresence& presence;
    RunHistory& history;
};

class ProgramExit {
public:
    explicit ProgramExit(const ExitParts& parts) : parts_(parts) {}

    /// Hides the window, removes the icon, saves, applies `autostart` and ends the message loop, unless the
    /// user declines.
    void exitProgram(ExitMode mode);

    /// Saves, then exits like exitProgram(ExitMode::AskFirst).
    void onSessionEnd();

    /// Ends the message loops again if the program is exiting, and returns whether it is. A menu that was
    /// just opening may have ignored the first attempt.
    [[nodiscard]] bool continueExit();

private:
    static void endLoops();
    [[nodiscard]] bool confirm();
    void save() const;

    ExitParts parts_;
    bool asking_ = false;
    bool exiting_ = false;
};

} // namespace scheduler
