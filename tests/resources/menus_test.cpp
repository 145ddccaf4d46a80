#include "lib/base/handles.h"
#include "resources/ids.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace {

using testing::ElementsAre;

// A menu as text, one line for each item: its text and command, "-" for a separator, submenus indented.
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
        if (item.fType & MFT_SEPARATOR) {
            lines += indent + "-\n";
        } else if (item.hSubMenu) {
            lines += indent + text.data() + "\n" + describe(item.hSubMenu, indent + "  ");
        } else {
            lines += indent + text.data() + " " + std::to_string(item.wID) + "\n";
        }
    }
    return lines;
}

struct MenuTraits {
    using Handle = HMENU;
    static Handle none() { return nullptr; }
    static void close(Handle handle) { DestroyMenu(handle); }
};
using Menu = base::UniqueHandle<MenuTraits>;

Menu loadMenu(int id) {
    return Menu(LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id)));
}

TEST(Menus, MainMenu) {
    EXPECT_EQ(IDR_MAIN_MENU, 100);
    EXPECT_EQ(describe(loadMenu(IDR_MAIN_MENU).get()), "&File\n"
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

TEST(Menus, ContextMenuOfAnItemIsTheFirstSubmenu) {
    EXPECT_EQ(IDR_ITEM_MENU, 132);
    const Menu menu = loadMenu(IDR_ITEM_MENU);
    EXPECT_EQ(GetMenuItemCount(menu.get()), 1);
    EXPECT_EQ(describe(GetSubMenu(menu.get(), 0)), "&Add... 143\n"
                                                   "&Edit... 144\n"
                                                   "&Delete 145\n"
                                                   "Enable 2019\n"
                                                   "-\n"
                                                   "&Open... 2021\n"
                                                   "&Run now 146\n");
}

TEST(Menus, MenuOfTheNotificationIconIsTheFirstSubmenu) {
    EXPECT_EQ(IDR_TRAY_MENU, 133);
    const Menu menu = loadMenu(IDR_TRAY_MENU);
    EXPECT_EQ(GetMenuItemCount(menu.get()), 1);
    EXPECT_EQ(describe(GetSubMenu(menu.get(), 0)), "&Display 2018\n"
                                                   "&Suspend 2007\n"
                                                   "E&xit 2012\n");
}

TEST(Menus, Accelerators) {
    EXPECT_EQ(IDR_ACCELERATORS, 100);
    HACCEL table = LoadAcceleratorsA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_ACCELERATORS));
    ASSERT_TRUE(table);
    std::array<ACCEL, 8> entries{};
    const int count = CopyAcceleratorTableA(table, entries.data(), static_cast<int>(entries.size()));

    constexpr int flags = FVIRTKEY | FCONTROL | FSHIFT | FALT;
    std::vector<std::tuple<int, int, int>> keys;
    for (const ACCEL& entry : std::span(entries).first(static_cast<std::size_t>(count))) {
        keys.emplace_back(entry.fVirt & flags, entry.key, entry.cmd);
    }
    EXPECT_THAT(keys,
                ElementsAre(std::tuple(FVIRTKEY | FCONTROL | FSHIFT, 'T', 2010),
                            std::tuple(FVIRTKEY, VK_DELETE, 145), std::tuple(FVIRTKEY, VK_RETURN, 144)));
}

} // namespace
