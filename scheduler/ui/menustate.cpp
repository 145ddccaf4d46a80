#include "scheduler/ui/menustate.h"

#include "resources/ids.h"

namespace scheduler {
namespace {

const char* enableText(const MenuContext& context) {
    if (context.disabled == context.selected)
        return "Enable";
    return context.disabled == 0 ? "Disable" : "Enable/disable";
}

void updateItem(HMENU menu, UINT command, const MenuItemState& state) {
    if (state.text)
        ModifyMenuA(menu, command, MF_BYCOMMAND | MF_STRING, command, state.text);
    EnableMenuItem(menu, command, MF_BYCOMMAND | (state.enabled ? UINT{MF_ENABLED} : UINT{MF_GRAYED}));
}

} // namespace

MenuContext menuContext(const ScheduleList& schedule, const Selection& selection, bool suspended) {
    MenuContext context;
    context.suspended = suspended;
    context.selected = selection.size();
    for (const std::size_t position : selection) {
        context.disabled += schedule[position].disabled != 0;
        context.projects += !isCommandLine(schedule[position]);
    }
    return context;
}

MenuItemState menuItemState(UINT command, const MenuContext& context) {
    MenuItemState state;
    switch (command) {
    case IDM_ADD:
        state.isDefault = context.selected == 0;
        break;
    case IDM_EDIT:
        state.enabled = context.selected == 1;
        state.isDefault = context.selected == 1;
        break;
    case IDM_DELETE:
    case IDM_RUN:
        state.enabled = context.selected > 0;
        break;
    case IDM_SUSPEND:
        state.text = context.suspended ? "Resume" : "Suspend";
        break;
    case IDM_DISPLAY:
        state.isDefault = true;
        break;
    case IDM_ENABLE:
        state.text = enableText(context);
        state.enabled = context.selected > 0;
        break;
    case IDM_OPEN:
        state.enabled = context.projects > 0;
        break;
    default:
        break;
    }
    return state;
}

void updateMenu(HMENU menu, const MenuContext& context) {
    constexpr UINT noItem = 0xFFFFFFFF;
    UINT defaultItem = noItem;
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        const UINT command = GetMenuItemID(menu, position);
        if (command == 0 || command == noItem) // separator or submenu
            continue;
        const MenuItemState state = menuItemState(command, context);
        updateItem(menu, command, state);
        if (state.isDefault)
            defaultItem = command;
    }
    SetMenuDefaultItem(menu, defaultItem, FALSE);
}

} // namespace scheduler
