// The menus without a mouse: which key leads to a command, in each state in which its menu can come up.

#include "resources/ids.h"
#include "scheduler/ui/menustate.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace {

using scheduler::MenuContext;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const std::array contexts = {
    MenuContext{},
    MenuContext{0, 0, 0, true},
    MenuContext{1, 0, 1, false},
    MenuContext{1, 1, 1, true},
    MenuContext{2, 1, 2, false},
};

struct Item {
    UINT command;
    int letter;    ///< that leads to it
    bool isMarked; ///< otherwise it is the first of its text, which counts only where no item is marked by it
};

Item itemAt(HMENU menu, int position) {
    std::array<char, 128> buffer{};
    GetMenuStringA(menu, static_cast<UINT>(position), buffer.data(), static_cast<int>(buffer.size()),
                   MF_BYPOSITION);
    const std::string text = buffer.data();
    const std::size_t mark = text.find('&');
    const bool isMarked = mark != std::string::npos;
    const int letter = std::toupper(static_cast<unsigned char>(text[isMarked ? mark + 1 : 0]));
    return {GetMenuItemID(menu, position), letter, isMarked};
}

std::vector<Item> itemsOf(HMENU menu) {
    std::vector<Item> items;
    for (int position = 0; position < GetMenuItemCount(menu); ++position)
        if (!(GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION) & MF_SEPARATOR))
            items.push_back(itemAt(menu, position));
    return items;
}

/// Commands to which no letter leads: another one's is the same.
std::vector<UINT> withoutLetter(const std::vector<Item>& items) {
    std::vector<UINT> found;
    for (const Item& item : items)
        for (const Item& other : items)
            if (&other != &item && other.letter == item.letter && (other.isMarked || !item.isMarked)) {
                found.push_back(item.command);
                break;
            }
    return found;
}

class MenuKeys : public testing::Test {
protected:
    ~MenuKeys() override { DestroyMenu(bar_); }

    HMENU submenu(int resource, int position) {
        DestroyMenu(bar_);
        bar_ = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource));
        return GetSubMenu(bar_, position);
    }

    HMENU bar_ = nullptr;
};

TEST_F(MenuKeys, EachMenuOfTheBarHasItsLetter) {
    submenu(IDR_MAIN_MENU, 0);
    const std::vector<Item> menus = itemsOf(bar_);
    EXPECT_EQ(menus.size(), 3U);
    for (const Item& menu : menus)
        EXPECT_TRUE(menu.isMarked) << menu.letter;
    EXPECT_THAT(withoutLetter(menus), IsEmpty());
}

TEST_F(MenuKeys, FileHelpAndTheIconsMenuHaveALetterForEachCommand) {
    for (const auto& [resource, position] :
         {std::pair{IDR_MAIN_MENU, 0}, {IDR_MAIN_MENU, 2}, {IDR_TRAY_MENU, 0}})
        for (const MenuContext& context : contexts) {
            SCOPED_TRACE(resource * 10 + position);
            const HMENU menu = submenu(resource, position);
            scheduler::updateMenu(menu, context);
            EXPECT_FALSE(itemsOf(menu).empty());
            EXPECT_THAT(withoutLetter(itemsOf(menu)), IsEmpty());
        }
}

// Its texts follow the state and bear no mark; they begin with the letters of "Edit..." and "Delete". The
// arrows go to it.
TEST_F(MenuKeys, AmongTheCommandsOnEntriesOnlyEnableHasNone) {
    for (const auto& [resource, position] : {std::pair{IDR_MAIN_MENU, 1}, {IDR_ITEM_MENU, 0}})
        for (const MenuContext& context : contexts) {
            SCOPED_TRACE(resource * 10 + position);
            const HMENU menu = submenu(resource, position);
            scheduler::updateMenu(menu, context);
            EXPECT_THAT(withoutLetter(itemsOf(menu)), UnorderedElementsAre(IDM_ENABLE));
        }
}

} // namespace
