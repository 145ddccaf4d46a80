#include "resources/ids.h"
#include "scheduler/ui/menustate.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using scheduler::MenuContext;
using scheduler::ScheduledProject;

class MenuState : public testing::Test {
protected:
    static ScheduledProject entry(const std::string& path, bool disabled) {
        ScheduledProject project;
        project.path = path;
        project.disabled = disabled;
        return project;
    }
};

TEST_F(MenuState, FollowsTheSelection) {
    const MenuContext none{};
    const MenuContext one{1, 0, 1, false};
    const MenuContext two{2, 0, 2, false};
    const struct {
        UINT command;
        MenuContext context; // selected, disabled, projects, suspended
        const char* text;
        bool enabled;
        bool isDefault;
    } rows[] = {
        {IDM_ADD, none, nullptr, true, true},
        {IDM_ADD, one, nullptr, true, false},
        {IDM_ADD, two, nullptr, true, false},
        {IDM_EDIT, none, nullptr, false, false},
        {IDM_EDIT, one, nullptr, true, true},
        {IDM_EDIT, two, nullptr, false, false},
        {IDM_DELETE, none, nullptr, false, false},
        {IDM_DELETE, one, nullptr, true, false},
        {IDM_DELETE, two, nullptr, true, false},
        {IDM_RUN, none, nullptr, false, false},
        {IDM_RUN, one, nullptr, true, false},
        {IDM_RUN, two, nullptr, true, false},
        {IDM_SUSPEND, {0, 0, 0, false}, "Suspend", true, false},
        {IDM_SUSPEND, {0, 0, 0, true}, "Resume", true, false},
        {IDM_DISPLAY, none, nullptr, true, true},
        {IDM_DISPLAY, two, nullptr, true, true},
        {IDM_ENABLE, none, "Enable", false, false},
        {IDM_ENABLE, {1, 1, 1, false}, "Enable", true, false},
        {IDM_ENABLE, {3, 3, 0, false}, "Enable", true, false},
        {IDM_ENABLE, {1, 0, 1, false}, "Disable", true, false},
        {IDM_ENABLE, {3, 0, 1, false}, "Disable", true, false},
        {IDM_ENABLE, {3, 1, 1, false}, "Enable/disable", true, false},
        {IDM_ENABLE, {3, 2, 1, false}, "Enable/disable", true, false},
        {IDM_OPEN, none, nullptr, false, false},
        {IDM_OPEN, {2, 0, 0, false}, nullptr, false, false},
        {IDM_OPEN, {2, 0, 1, false}, nullptr, true, false},
        {IDM_EXIT, none, nullptr, true, false},
        {IDM_PREFERENCES, two, nullptr, true, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE("row " + std::to_string(&row - rows));
        const auto state = scheduler::menuItemState(row.command, row.context);
        EXPECT_STREQ(state.text, row.text);
        EXPECT_EQ(state.enabled, row.enabled);
        EXPECT_EQ(state.isDefault, row.isDefault);
    }
}

TEST_F(MenuState, TheContextCountsOnlySelectedEntries) {
    scheduler::ScheduleList list;
    list.assign({entry("a.kra", false), entry("run:x", true), entry("RUN:x", true), entry("b.kra", true)});
    const MenuContext context = scheduler::menuContext(list, {0, 1, 2}, true);
    EXPECT_EQ(context.selected, 3U);
    EXPECT_EQ(context.disabled, 2U);
    EXPECT_EQ(context.projects, 2U) << "upper case RUN: is no command line";
    EXPECT_TRUE(context.suspended);
    EXPECT_EQ(scheduler::menuContext(list, {}, false).selected, 0U);
}

TEST_F(MenuState, IsAppliedToTheItemsOfAPopupMenu) {
    const HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_STRING, IDM_ADD, "&Add...");
    AppendMenuA(menu, MF_STRING, IDM_EDIT, "&Edit...");
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(menu, MF_STRING, IDM_ENABLE, "&Enable");
    const struct {
        std::size_t selected;
        const char* enableText;
        UINT defaultItem;
        bool canEdit;
    } rows[] = {
        {1, "Disable", IDM_EDIT, true}, {2, "Disable", 0xFFFFFFFF, false}, {0, "Enable", IDM_ADD, false}};
    for (const auto& row : rows) {
        scheduler::updateMenu(menu, {row.selected, 0, row.selected, false});
        for (const auto& [command, expected] :
             {std::pair{IDM_ADD, "&Add..."}, {IDM_ENABLE, row.enableText}}) {
            std::array<char, 64> text{};
            GetMenuStringA(menu, static_cast<UINT>(command), text.data(), static_cast<int>(text.size()),
                           MF_BYCOMMAND);
            EXPECT_STREQ(text.data(), expected);
        }
        EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), row.defaultItem);
        EXPECT_EQ((GetMenuState(menu, IDM_EDIT, MF_BYCOMMAND) & MF_GRAYED) == 0, row.canEdit);
        EXPECT_EQ((GetMenuState(menu, IDM_ENABLE, MF_BYCOMMAND) & MF_GRAYED) == 0, row.selected > 0);
    }
    EXPECT_EQ(GetMenuItemCount(menu), 4);
    DestroyMenu(menu);
}

} // namespace
