#pragma once

#include "scheduler/model/schedulelist.h"
#include "scheduler/ui/selection.h"

#include <windows.h>

#include <cstddef>

namespace scheduler {

/// The state that menu items depend on. The numbers count selected entries.
struct MenuContext {
    std::size_t selected = 0;
    std::size_t disabled = 0;
    std::size_t projects = 0; ///< project files, not command lines
    bool suspended = false;
};

MenuContext menuContext(const ScheduleList& schedule, const Selection& selection, bool suspended);

struct MenuItemState {
    const char* text = nullptr; ///< null: as in the resource
    bool enabled = true;
    bool isDefault = false;
};

/// A command that does not depend on the context is enabled and keeps its text.
MenuItemState menuItemState(UINT command, const MenuContext& context);

void updateMenu(HMENU menu, const MenuContext& context);

} // namespace scheduler
