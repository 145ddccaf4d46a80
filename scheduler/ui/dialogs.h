// The dialogs that the main window's commands open.
#pragma once

#include "scheduler/model/preferences.h"
#include "scheduler/model/scheduledproject.h"
#include "scheduler/model/schedulelist.h"

#include <windows.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scheduler {

/// What the editor was left with by OK.
struct EditedEntry {
    ScheduledProject record;
    std::vector<std::string> files; ///< chosen in its Browse dialog, in the form that addEntries takes
};

// A dialog that cannot be made is reported over its owner, and changes nothing.

/// Lets the user edit `record`, which is the entry at `position` of the schedule or, without a position, a
/// new one. The clock tells today's date. Nothing when the editor was cancelled.
std::optional<EditedEntry> editEntry(HWND owner, const ScheduledProject& record, const ScheduleList& schedule,
                                     std::optional<std::size_t> position, const base::Clock& clock);

/// Lets the user change the preferences; true on OK, else they are untouched.
[[nodiscard]] bool editPreferences(HWND owner, Preferences& preferences);

void showAbout(HWND owner);

} // namespace scheduler
