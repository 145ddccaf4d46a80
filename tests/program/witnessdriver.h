// The test's end of the witness: puts it into a running copy, and reads what it has seen.
#pragma once

#include "lib/base/handles.h"
#include "tests/program/witness/notes.h"

#include <windows.h>

#include <ostream>
#include <string>
#include <vector>

namespace driver {

/// A menu item as its user sees it.
struct SeenItem {
    UINT command = 0;
    std::string text;
    bool enabled = true;
    bool isDefault = false;

    friend bool operator==(const SeenItem&, const SeenItem&) = default;
};

/// Shown by failing tests.
void PrintTo(const SeenItem& item, std::ostream* out);

class WitnessDriver {
public:
    /// Looks at the thread of a window; counts the paintings of `painted`.
    WitnessDriver(HWND mainWindow, HWND painted);
    ~WitnessDriver();
    WitnessDriver(const WitnessDriver&) = delete;
    WitnessDriver& operator=(const WitnessDriver&) = delete;

    bool isThere() const { return hooks_.size() == 3; }

    LONG paints() const { return notes_->paints; }
    LONG commands() const { return notes_->commands; }
    UINT lastCommand() const { return notes_->lastCommand; }
    LONG ticks() const { return notes_->ticks; }
    /// Waits until the main window's timer has come so often. What was posted before is dealt with by then,
    /// as the timer comes last.
    bool passTicks(LONG count) const;
    LONG menus() const { return notes_->menus; }

    // What the witness does inside the process: see witness::Act. The numbers are those of the last count.
    void count() const { perform(witness::Act::Count, mainWindow_); }
    DWORD userObjects() const { return notes_->userObjects; }
    DWORD gdiObjects() const { return notes_->gdiObjects; }
    void settleHeaps() const { perform(witness::Act::SettleHeaps, mainWindow_); }
    void freeTexts() const { perform(witness::Act::FreeTexts, mainWindow_); }
    LONG freedTexts() const { return notes_->freedTexts; }
    void fillContexts() const { perform(witness::Act::FillContexts, mainWindow_); }
    static void draw(HWND window) { perform(witness::Act::Draw, window); }

    /// What the menu shows that opens once `open` is called. The menu is closed again.
    template<typename Action>
    std::vector<SeenItem> menuOpenedBy(const Action& open) const {
        const LONG before = menus();
        open();
        return waitForMenu(before);
    }

    /// Drops files on the main window.
    void drop(const std::vector<std::string>& paths) const;

    bool isMenuOpen() const;
    void closeMenu() const;

private:
    static void perform(witness::Act act, HWND window);
    std::vector<SeenItem> waitForMenu(LONG before) const;

    HWND mainWindow_;
    base::KernelHandle memory_;
    witness::Notes* notes_; // changes under our eyes
    std::vector<HHOOK> hooks_;
};

} // namespace driver
