#include "lib/base/handles.h"
#include "resources/ids.h"
#include "scheduler/ui/framework/resourcetext.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace {

using testing::ElementsAre;

/// One line per menu item: its text and command id, or "-" for a separator. Submenu items are indented.
std::string describe(HMENU menu, const std::string& indent = "") {
    std::string lines;
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        std::array<char, 128> text{};
        MENUITEMINFOA item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STRING | MIIM_SUBMENU;
        item.dwTypeData = text.data();
        item.cch = static_cast<UINT>(text.size());
        EXPECT_TRUE(GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &item));
        lines += indent;
        if (item.fType & MFT_SEPARATOR)
            lines += "-\n";
        else if (item.hSubMenu)
            lines += text.data() + std::string("\n") + describe(item.hSubMenu, indent + "  ");
        else
            lines += text.data() + std::string(" ") + std::to_string(item.wID) + "\n";
    }
    return lines;
}

base::Menu load(int id) {
    return base::Menu(LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id)));
}

/// The context menu that a resource holds as its only submenu.
std::string describeContextMenu(int id) {
    const base::Menu menu = load(id);
    EXPECT_EQ(GetMenuItemCount(menu.get()), 1);
    return describe(GetSubMenu(menu.get(), 0));
}

TEST(Menus, TheMainMenuHoldsFileEditAndHelp) {
    EXPECT_EQ(describe(load(100).get()), "&File\n"
                                         "  &Preferences... 138\n"
                                         "  -\n"
                                         "  &Suspend 2007\n"
                                         "  &Close 2022\n"
                                         "  E&xit 2012\n"
                                         "&Edit\n"
                                         "  &Add... 143\n"
                                         "  &Edit... 144\n"
                                         "  &Delete 145\n"
                                         "  &Enable 2019\n"
                                         "  -\n"
                                         "  &Run this project 146\n"
                                         "  &Open this project 2021\n"
                                         "&Help\n"
                                         "  &About the Corvane Scheduler... 2011\n");
}

TEST(Menus, EachContextMenuIsTheOnlySubmenuOfItsResource) {
    EXPECT_EQ(describeContextMenu(132), "&Add... 143\n"
                                        "&Edit... 144\n"
                                        "&Delete 145\n"
                                        "Enable 2019\n"
                                        "-\n"
                                        "&Open... 2021\n"
                                        "&Run now 146\n");
    EXPECT_EQ(describeContextMenu(133), "&Display 2018\n"
                                        "&Suspend 2007\n"
                                        "E&xit 2012\n");
}

TEST(Menus, TheAcceleratorsAreControlShiftTDeleteAndEnter) {
    HACCEL table = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(100));
    ASSERT_TRUE(table);
    std::array<ACCEL, 8> entries{};
    const int count = CopyAcceleratorTableA(table, entries.data(), static_cast<int>(entries.size()));

    constexpr int flags = FVIRTKEY | FCONTROL | FSHIFT | FALT;
    std::vector<std::tuple<int, int, int>> keys;
    for (int i = 0; i < count; ++i) {
        const ACCEL& entry = entries[static_cast<std::size_t>(i)];
        keys.emplace_back(entry.fVirt & flags, entry.key, entry.cmd);
    }
    EXPECT_THAT(keys,
                ElementsAre(std::tuple(FVIRTKEY | FCONTROL | FSHIFT, 'T', 2010),
                            std::tuple(FVIRTKEY, VK_DELETE, 145), std::tuple(FVIRTKEY, VK_RETURN, 144)));
}

TEST(Menus, TheStringTableDescribesTheCommands) {
    std::map<UINT, std::string> found;
    for (UINT id = 0; id <= 0xFFFF; ++id)
        if (const std::string text = framework::resourceText(id); !text.empty())
            found.emplace(id, text);
    EXPECT_EQ(found, (std::map<UINT, std::string>{
                         {138, "Sets your preferences for how the Scheduler will function"},
                         {143, "Adds a new project to the schedule"},
                         {144, "Edits the schedule for the selected project"},
                         {145, "Deletes the selected project from the schedule"},
                         {146, "Runs this project now, instead of on schedule"},
                         {2007, "Suspends further scheduled programs"},
                         {2010, "Tests the schedule"},
                         {2019, "Enables this project so that it will run on schedule"},
                         {2020, "Disables this project"},
                         {2021, "Opens this project with Corvane"},
                     }));
    EXPECT_EQ(IDM_HELP, 2017) << "it is in no menu and has no description";
}

} // namespace
