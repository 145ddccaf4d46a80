#include "lib/base/stackalignment.h"
#include "scheduler/ui/dialogs.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/heapuse.h"
#include "tests/support/losttexts.h"

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

    /// The platform keeps what it made for the first dialogs; a leak grows for ever.
    static void expectNothingIsLeft(const std::function<void()>& open,
                                    const std::function<void(HWND dialog)>& use) {
        constexpr int batches = 10;
        // More than a heap sets aside at once, so that every batch shows a leak.
        constexpr int batch = 40;
        Holding before;
        for (int time = 0; time < batches; ++time) {
            for (int opening = 0; opening < batch; ++opening) {
                const test::WhileOpen user([&](HWND dialog) {
                    drawAll(dialog);
                    use(dialog);
                });
                open();
            }
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

TEST_F(Leftovers, AboutLeavesNothing) {
    expectNothingIsLeft([] { scheduler::showAbout(nullptr); },
                        [](HWND dialog) { test::press(dialog, IDOK); });
}

TEST_F(Leftovers, ThePreferencesLeaveNothing) {
    scheduler::Preferences preferences;
    expectNothingIsLeft([&] { scheduler::editPreferences(nullptr, preferences); },
                        [](HWND dialog) { test::press(dialog, IDCANCEL); });
}

TEST_F(Leftovers, TheEditorLeavesNothing) {
    const scheduler::ScheduleList schedule;
    expectNothingIsLeft(
        [&] { scheduler::editEntry(nullptr, {}, schedule, std::nullopt, base::systemClock()); },
        [](HWND sheet) {
            SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
            drawAll(sheet);
            test::press(sheet, IDCANCEL);
        });
}

} // namespace
