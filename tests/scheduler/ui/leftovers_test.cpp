// What a dialog leaves behind when it is gone: nothing.

#include "lib/base/stackalignment.h"
#include "scheduler/ui/dialogs.h"
#include "tests/scheduler/ui/whileopen.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/heapuse.h"
#include "tests/support/losttexts.h"

#include <windows.h>

#include <prsht.h>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace {

struct Holding {
    std::size_t heapBytes = test::heapBytesInUse();
    unsigned gdiObjects = test::gdiObjectCount();

    friend bool operator==(const Holding&, const Holding&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Holding& held) {
        return out << held.heapBytes << " bytes in heaps, " << held.gdiObjects << " graphics objects";
    }
};

CALLED_BY_PLATFORM LRESULT CALLBACK onSent(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION)
        test::freeBlockOfDyingText(*reinterpret_cast<const CWPSTRUCT*>(lParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void drawAll(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

class Leftovers : public testing::Test {
protected:
    Leftovers() {
        if (test::textsLoseTheirBlock())
            hook_ = SetWindowsHookExA(WH_CALLWNDPROC, &onSent, nullptr, GetCurrentThreadId());
    }
    ~Leftovers() override {
        if (hook_)
            UnhookWindowsHookEx(hook_);
    }

    /// The platform keeps what it made for the first of many dialogs; what is lost with each grows for ever.
    static void expectNothingIsLeft(const std::function<void()>& openAndClose) {
        constexpr int batches = 10;
        // More than a heap sets small blocks aside at once: of one lost each time, every batch needs more.
        constexpr int batch = 40;
        Holding before;
        for (int time = 0; time < batches; ++time) {
            for (int opening = 0; opening < batch; ++opening)
                openAndClose();
            const Holding after;
            if (after == before)
                return;
            if (time + 1 == batches)
                ADD_FAILURE() << before << " before the last " << batch << " openings, after them " << after;
            before = after;
        }
    }

private:
    HHOOK hook_ = nullptr;
};

TEST_F(Leftovers, OfAbout) {
    expectNothingIsLeft([] {
        const test::WhileOpen close([](HWND dialog) {
            drawAll(dialog);
            SendDlgItemMessageA(dialog, IDOK, BM_CLICK, 0, 0);
        });
        scheduler::showAbout(nullptr);
    });
}

TEST_F(Leftovers, OfPreferences) {
    scheduler::Preferences preferences;
    expectNothingIsLeft([&] {
        const test::WhileOpen close([](HWND dialog) {
            drawAll(dialog);
            SendDlgItemMessageA(dialog, IDCANCEL, BM_CLICK, 0, 0);
        });
        scheduler::editPreferences(nullptr, preferences);
    });
}

TEST_F(Leftovers, OfTheEditor) {
    const scheduler::ScheduledProject record;
    const scheduler::ScheduleList schedule;
    expectNothingIsLeft([&] {
        const test::WhileOpen close([](HWND sheet) {
            drawAll(sheet);
            SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
            drawAll(sheet);
            SendDlgItemMessageA(sheet, IDCANCEL, BM_CLICK, 0, 0);
        });
        scheduler::editEntry(nullptr, record, schedule, std::nullopt, base::systemClock());
    });
}

} // namespace
