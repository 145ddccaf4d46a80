// What the tests of the commands have in common: the real program, its menus and its keys.
#pragma once

#include "lib/base/trayicon.h"
#include "resources/ids.h"
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
        ProgramTest::startWith(entries, switches);
        witness_ = std::make_unique<WitnessDriver>(window(), list().handle());
        ASSERT_TRUE(witness_->isThere());
    }

    const WitnessDriver& witness() const { return *witness_; }

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
        std::vector<SeenItem> items = {{IDM_ADD, "&Add...", true, none},
                                       {IDM_EDIT, "&Edit...", oneSelected, oneSelected},
                                       {IDM_DELETE, "&Delete", anySelected, false},
                                       {IDM_ENABLE, enableText, anySelected, false},
                                       {0, "", true, false},
                                       {IDM_RUN, "&Run this project", anySelected, false},
                                       {IDM_OPEN, "&Open this project", canOpen, false}};
        EXPECT_EQ(barMenu('e'), items);
        items[5] = {IDM_OPEN, "&Open...", canOpen, false};
        items[6] = {IDM_RUN, "&Run now", anySelected, false};
        EXPECT_EQ(itemMenu(), items);
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

private:
    std::unique_ptr<WitnessDriver> witness_;
};

} // namespace driver
