// The dialogs that commands open. If a dialog cannot be created, an error message is shown.
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

/// The editor's result on OK.
struct EditedEntry {
    ScheduledProject record;
    std::vector<std::string> files; ///< if several were chosen; in the form for addEntries()
};

/// Edits a copy of `record`, which is new or the entry at `position`. Empty on cancel or failure.
std::optional<EditedEntry> editEntry(HWND owner, const ScheduledProject& record, const ScheduleList& schedule,
                                     std::optional<std::size_t> position, const base::Clock& clock);

/// True on OK; otherwise the preferences are unchanged.
[[nodiscard]] bool editPreferences(HWND owner, Preferences& preferences);

void showAbout(HWND owner);

} // namespace scheduler
