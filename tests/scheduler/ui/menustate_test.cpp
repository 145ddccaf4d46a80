#include "resources/ids.h"
#include "scheduler/ui/menustate.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using scheduler::menuContext;
using scheduler::MenuContext;
using scheduler::menuItemState;
using scheduler::ScheduledProject;
using scheduler::ScheduleList;

struct Row {
    UINT command;
    MenuContext context; // selected, disabled, projects, suspended
    const char* text;
    bool enabled;
    bool isDefault;
};

const MenuContext none{};
const MenuContext one{1, 0, 1, false};
const MenuContext two{2, 0, 2, false};

const std::array rows = {
    Row{IDM_ADD, none, nullptr, true, true},
    Row{IDM_ADD, one, nullptr, true, false},
    Row{IDM_ADD, two, nullptr, true, false},
    Row{IDM_EDIT, none, nullptr, false, false},
    Row{IDM_EDIT, one, nullptr, true, true},
    Row{IDM_EDIT, two, nullptr, false, false},
    Row{IDM_DELETE, none, nullptr, false, false},
    Row{IDM_DELETE, one, nullptr, true, false},
    Row{IDM_DELETE, two, nullptr, true, false},
    Row{IDM_RUN, none, nullptr, false, false},
    Row{IDM_RUN, one, nullptr, true, false},
    Row{IDM_RUN, two, nullptr, true, false},
    Row{IDM_SUSPEND, {0, 0, 0, false}, "Suspend", true, false},
    Row{IDM_SUSPEND, {0, 0, 0, true}, "Resume", true, false},
    Row{IDM_DISPLAY, none, nullptr, true, true},
    Row{IDM_DISPLAY, two, nullptr, true, true},
    Row{IDM_ENABLE, none, "Enable", false, false},
    Row{IDM_ENABLE, {1, 1, 1, false}, "Enable", true, false},
    Row{IDM_ENABLE, {3, 3, 0, false}, "Enable", true, false},
    Row{IDM_ENABLE, {1, 0, 1, false}, "Disable", true, false},
    Row{IDM_ENABLE, {3, 0, 1, false}, "Disable", true, false},
    Row{IDM_ENABLE, {3, 1, 1, false}, "Enable/disable", true, false},
    Row{IDM_ENABLE, {3, 2, 1, false}, "Enable/disable", true, false},
    Row{IDM_OPEN, none, nullptr, false, false},
    Row{IDM_OPEN, {2, 0, 0, false}, nullptr, false, false},
    Row{IDM_OPEN, {2, 0, 1, false}, nullptr, true, false},
    Row{IDM_EXIT, none, nullptr, true, false},
    Row{IDM_PREFERENCES, two, nullptr, true, false},
};

TEST(MenuItemState, FollowsTheSelection) {
    for (const Row& row : rows) {
        SCOPED_TRACE("command " + std::to_string(row.command) + ", selected " +
                     std::to_string(row.context.selected) + ", disabled " +
                     std::to_string(row.context.disabled));
        const auto state = menuItemState(row.command, row.context);
        EXPECT_STREQ(state.text, row.text);
        EXPECT_EQ(state.enabled, row.enabled);
        EXPECT_EQ(state.isDefault, row.isDefault);
    }
}

ScheduledProject entry(const std::string& path, bool disabled) {
    ScheduledProject project;
    project.path = path;
    project.disabled = disabled;
    return project;
}

TEST(MenuContext, CountsTheSelectedEntriesOnly) {
    ScheduleList list;
    list.assign({entry("a.kra", false), entry("run:x", true), entry("RUN:x", true), entry("b.kra", true)});
    const MenuContext context = menuContext(list, {0, 1, 2}, true);
    EXPECT_EQ(context.selected, 3U);
    EXPECT_EQ(context.disabled, 2U);
    EXPECT_EQ(context.projects, 2U) << "capitals do not make a command line";
    EXPECT_TRUE(context.suspended);
    EXPECT_EQ(menuContext(list, {}, false).selected, 0U);
}

std::string itemText(HMENU menu, UINT command) {
    std::array<char, 64> text{};
    GetMenuStringA(menu, command, text.data(), static_cast<int>(text.size()), MF_BYCOMMAND);
    return text.data();
}

TEST(UpdateMenu, BringsTheItemsOfAPopupUpToDate) {
    const HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_STRING, IDM_ADD, "&Add...");
    AppendMenuA(menu, MF_STRING, IDM_EDIT, "&Edit...");
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(menu, MF_STRING, IDM_ENABLE, "&Enable");

    scheduler::updateMenu(menu, one);
    EXPECT_EQ(itemText(menu, IDM_ADD), "&Add...");
    EXPECT_EQ(itemText(menu, IDM_ENABLE), "Disable");
    EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), UINT{IDM_EDIT});
    EXPECT_EQ(GetMenuState(menu, IDM_EDIT, MF_BYCOMMAND) & MF_GRAYED, 0U);

    scheduler::updateMenu(menu, two);
    EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), 0xFFFFFFFF);
    EXPECT_NE(GetMenuState(menu, IDM_EDIT, MF_BYCOMMAND) & MF_GRAYED, 0U);

    scheduler::updateMenu(menu, none);
    EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), UINT{IDM_ADD});
    EXPECT_NE(GetMenuState(menu, IDM_ENABLE, MF_BYCOMMAND) & MF_GRAYED, 0U);
    EXPECT_EQ(GetMenuItemCount(menu), 4);
    DestroyMenu(menu);
}

} // namespace
