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

/// Asked if an enabled entry still has a next run.
extern const char* const exitQuestion;

/// What the exit saves and closes. Not owned; must outlive ProgramExit.
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

    /// Hides the window, removes the icon, saves and ends the message loop, unless the user declines.
    void exitProgram(ExitMode mode);

    /// Saves first, then exits like exitProgram: the system may end the process before the user answers.
    void onSessionEnd();

private:
    [[nodiscard]] bool confirm();
    void save() const;

    ExitParts parts_;
    bool asking_ = false;
};

} // namespace scheduler
