#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/hintwindow.h"
#include "scheduler/ui/framework/messagepump.h"
#include "tests/support/allocations.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

using framework::HintWindow;

CALLED_BY_PLATFORM BOOL CALLBACK findHint(HWND window, LPARAM found) noexcept {
    if (!(GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND shownHint() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &findHint, reinterpret_cast<LPARAM>(&found));
    return found;
}

TEST(HintMemory, HintsWhoseWindowsHaveDiedAreLetGoOfWithoutMemory) {
    for (int i = 0; i < 2; ++i) {
        framework::Hint hint;
        hint.text = "a text";
        ASSERT_TRUE(HintWindow::show(nullptr, hint));
    }
    while (const HWND window = shownHint())
        DestroyWindow(window);
    const std::size_t before = test::deallocationCount;
    PostThreadMessageA(GetCurrentThreadId(), WM_NULL, 0, 0);
    PostQuitMessage(7);
    {
        const test::RefusedAllocations refused;
        EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 7);
    }
    EXPECT_GE(test::deallocationCount, before + 2) << "both are gone";
}

} // namespace
