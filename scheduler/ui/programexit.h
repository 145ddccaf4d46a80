// The program's end: whether the user wants it, and what is saved and taken down then.
#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "scheduler/run/runhistory.h"
#include "scheduler/ui/notificationicon.h"
#include "scheduler/ui/schedulelistview.h"
#include "scheduler/ui/windowpresence.h"

namespace scheduler {

/// Whether the user is asked before the program ends.
enum class ExitMode { AskFirst, WithoutAsking };

/// The question that is asked while an enabled entry still has a next run.
extern const char* const exitQuestion;

/// What the exit saves and takes down. Owns nothing; all of it outlives the exit.
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

    /// Hides the window, takes the icon away, saves everything and ends the message loop; or changes nothing
    /// when the user, asked, wants to stay.
    void exitProgram(ExitMode mode);

    /// The log-on session is ending: saves everything, and then leaves as exitProgram does. The answer to the
    /// question decides as ever, but the platform may not wait for it.
    void onSessionEnd();

private:
    [[nodiscard]] bool confirm();
    void save() const;

    ExitParts parts_;
    bool asking_ = false;
};

} // namespace scheduler
