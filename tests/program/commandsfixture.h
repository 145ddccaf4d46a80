// What the tests of the commands have in common: the real program, its menus and its keys.
#pragma once

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"
#include "tests/program/witnessdriver.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace driver {

/// The real program with a schedule of the test's own.
class Commands : public ProgramTest {
protected:
    void startWith(const std::vector<scheduler::ScheduledProject>& entries,
                   const std::string& switches = "") {
        saveEntries(entries);
        ASSERT_TRUE(scheduler_.start(switches));
        list_ = std::make_unique<ListDriver>(scheduler_.window());
        witness_ = std::make_unique<WitnessDriver>(scheduler_.window(), list_->handle());
        ASSERT_TRUE(witness_->isThere());
    }

    HWND window() const { return scheduler_.window(); }
    const ListDriver& list() const { return *list_; }
    const WitnessDriver& witness() const { return *witness_; }

    /// Carries a command out before it returns.
    void carryOut(int command) const { SendMessageA(window(), WM_COMMAND, static_cast<WPARAM>(command), 0); }

    std::vector<SeenItem> barMenu(char letter) const {
        return witness().menuOpenedBy(
            [&] { PostMessageA(window(), WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(letter)); });
    }
    std::vector<SeenItem> itemMenu() const {
        return witness().menuOpenedBy([&] {
            PostMessageA(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list().handle()),
                         MAKELPARAM(50, 50));
        });
    }
    std::vector<SeenItem> trayMenu() const {
        return witness().menuOpenedBy(
            [&] { PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN); });
    }

    /// The Edit menu and the item menu for what is selected now: the same commands, other texts.
    void expectProjectMenus(bool oneSelected, bool anySelected, const std::string& enableText,
                            bool canOpen) const {
        const bool none = !anySelected;
        EXPECT_THAT(barMenu('e'),
                    testing::ElementsAre(SeenItem{IDM_ADD, "&Add...", true, none},
                                         SeenItem{IDM_EDIT, "&Edit...", oneSelected, oneSelected},
                                         SeenItem{IDM_DELETE, "&Delete", anySelected, false},
                                         SeenItem{IDM_ENABLE, enableText, anySelected, false},
                                         SeenItem{0, "", true, false},
                                         SeenItem{IDM_RUN, "&Run this project", anySelected, false},
                                         SeenItem{IDM_OPEN, "&Open this project", canOpen, false}));
        EXPECT_THAT(itemMenu(), testing::ElementsAre(SeenItem{IDM_ADD, "&Add...", true, none},
                                                     SeenItem{IDM_EDIT, "&Edit...", oneSelected, oneSelected},
                                                     SeenItem{IDM_DELETE, "&Delete", anySelected, false},
                                                     SeenItem{IDM_ENABLE, enableText, anySelected, false},
                                                     SeenItem{0, "", true, false},
                                                     SeenItem{IDM_OPEN, "&Open...", canOpen, false},
                                                     SeenItem{IDM_RUN, "&Run now", anySelected, false}));
    }

    /// Keys as from the keyboard: pressed in this order and let go of again.
    static void press(const std::vector<WORD>& keys) {
        const auto send = [](WORD key, DWORD flags) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.dwFlags = flags;
            SendInput(1, &input, sizeof(input));
        };
        for (const WORD key : keys)
            send(key, 0);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            send(*key, KEYEVENTF_KEYUP);
    }

    std::unique_ptr<ListDriver> list_;
    std::unique_ptr<WitnessDriver> witness_;
};

} // namespace driver
