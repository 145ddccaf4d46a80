// Loads the witness into a running copy, and reads its notes.
#pragma once

#include "lib/base/handles.h"
#include "tests/program/witness/notes.h"

#include <windows.h>

#include <vector>

namespace driver {

class WitnessDriver {
public:
    /// Watches the thread of a window.
    explicit WitnessDriver(HWND mainWindow);
    ~WitnessDriver();
    WitnessDriver(const WitnessDriver&) = delete;
    WitnessDriver& operator=(const WitnessDriver&) = delete;

    bool isThere() const { return hooks_.size() == 2; }

    LONG ticks() const { return notes_->ticks; }
    /// Waits for ticks. Messages that were posted before are handled by then: timer messages come last.
    bool passTicks(LONG count) const;

    // See witness::Act. The numbers are those of the last count.
    void count() const { perform(witness::Act::Count, mainWindow_); }
    DWORD userObjects() const { return notes_->userObjects; }
    DWORD gdiObjects() const { return notes_->gdiObjects; }
    void settleHeaps() const { perform(witness::Act::SettleHeaps, mainWindow_); }
    void freeTexts() const { perform(witness::Act::FreeTexts, mainWindow_); }
    LONG freedTexts() const { return notes_->freedTexts; }
    void fillContexts() const { perform(witness::Act::FillContexts, mainWindow_); }
    static void draw(HWND window) { perform(witness::Act::Draw, window); }

private:
    static void perform(witness::Act act, HWND window);

    HWND mainWindow_;
    base::KernelHandle memory_;
    witness::Notes* notes_; // written by the other process
    std::vector<HHOOK> hooks_;
};

} // namespace driver
