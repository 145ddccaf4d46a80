#include "lib/base/stackalignment.h"
#include "scheduler/ui/dialogs.h"
#include "tests/scheduler/ui/editoruser.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/heapuse.h"
#include "tests/support/leakedtexts.h"

#include <ostream>

namespace {

struct ResourceUse {
    std::size_t heapBytes = test::heapBytesInUse();
    unsigned gdiObjects = test::gdiObjectCount();

    friend bool operator==(const ResourceUse&, const ResourceUse&) = default;
    friend std::ostream& operator<<(std::ostream& out, const ResourceUse& use) {
        return out << use.heapBytes << " bytes in heaps, " << use.gdiObjects << " graphics objects";
    }
};

CALLED_BY_PLATFORM LRESULT CALLBACK onSent(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HC_ACTION)
        test::freeLeakedBlock(*reinterpret_cast<const CWPSTRUCT*>(lParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void drawAll(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

class Leaks : public testing::Test {
protected:
    Leaks() {
        if (test::textControlsLeak())
            hook_ = SetWindowsHookExA(WH_CALLWNDPROC, &onSent, nullptr, GetCurrentThreadId());
    }
    ~Leaks() override {
        if (hook_)
            UnhookWindowsHookEx(hook_);
    }

    /// The platform caches objects of the first dialogs, so only growth in every batch counts as a leak.
    static void expectNoLeak(const std::function<void()>& open, const std::function<void(HWND dialog)>& use) {
        constexpr int batches = 10;
        // Enough openings for a leak to exceed what a heap reserves at once, so that every batch shows it.
        constexpr int batch = 40;
        ResourceUse before;
        for (int time = 0; time < batches; ++time) {
            for (int opening = 0; opening < batch; ++opening) {
                const test::WhileOpen user([&](HWND dialog) {
                    drawAll(dialog);
                    use(dialog);
                });
                open();
            }
            const ResourceUse after;
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

TEST_F(Leaks, TheAboutDialogLeaksNothing) {
    expectNoLeak([] { scheduler::showAbout(nullptr); }, [](HWND dialog) { test::press(dialog, IDOK); });
}

TEST_F(Leaks, ThePreferencesLeakNothing) {
    scheduler::Preferences preferences;
    expectNoLeak([&] { scheduler::editPreferences(nullptr, preferences); },
                 [](HWND dialog) { test::press(dialog, IDCANCEL); });
}

TEST_F(Leaks, TheEditorLeaksNothing) {
    const scheduler::ScheduleList schedule;
    expectNoLeak([&] { scheduler::editEntry(nullptr, {}, schedule, std::nullopt, base::systemClock()); },
                 [](HWND sheet) {
                     SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
                     drawAll(sheet);
                     test::press(sheet, IDCANCEL);
                 });
}

} // namespace
