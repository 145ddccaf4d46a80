// The dialogs that commands open. A dialog that cannot be created is reported over its owner.
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
    std::vector<std::string> files; ///< chosen in the Browse dialog, as addEntries takes them
};

/// Edits a copy of `record`: the entry at `position`, or a new one without a position. Empty on cancel.
std::optional<EditedEntry> editEntry(HWND owner, const ScheduledProject& record, const ScheduleList& schedule,
                                     std::optional<std::size_t> position, const base::Clock& clock);

/// True on OK; otherwise the preferences are unchanged.
[[nodiscard]] bool editPreferences(HWND owner, Preferences& preferences);

void showAbout(HWND owner);

} // namespace scheduler
