// How the commands' menu items look just before a menu is shown.
#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/ui/selection.h"

#include <windows.h>

#include <cstddef>

namespace scheduler {

/// What the menus depend on.
struct MenuContext {
    std::size_t selected = 0; ///< entries selected
    std::size_t disabled = 0; ///< of these: switched off
    std::size_t projects = 0; ///< of these: project files, not command lines
    bool suspended = false;
};

MenuContext menuContext(const ScheduleList& schedule, const Selection& selection, bool suspended);

struct MenuItemState {
    const char* text = nullptr; ///< null: as in the resource
    bool enabled = true;
    bool isDefault = false;
};

/// The state of a command's item; of one that no rule speaks of, the resource's text, enabled.
MenuItemState menuItemState(UINT command, const MenuContext& context);

/// Brings the items of one popup menu up to date.
void updateMenu(HMENU menu, const MenuContext& context);

} // namespace scheduler
