#include "scheduler/ui/aboutdialog.h"
#include "tests/scheduler/ui/whileopen.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

TEST(AboutDialog, NamesTheProgramAndItsVersionBesideItsIcon) {
    const test::WhileOpen user([](HWND dialog) {
        char caption[64]{};
        GetWindowTextA(dialog, caption, sizeof caption);
        EXPECT_STREQ(caption, "About the Corvane Scheduler");
        EXPECT_NE(FindWindowExA(dialog, nullptr, "Static", "Corvane Scheduler, version 1.34"), nullptr);

        const HWND picture = GetWindow(dialog, GW_CHILD);
        const auto icon = reinterpret_cast<HICON>(SendMessageA(picture, STM_GETICON, 0, 0));
        EXPECT_NE(icon, nullptr);
        SendDlgItemMessageA(dialog, IDOK, BM_CLICK, 0, 0);
    });
    EXPECT_EQ(scheduler::AboutDialog().runModal(nullptr), IDOK);
}

TEST(AboutDialog, ItsCaptionAndEscapeCloseItToo) {
    const std::function<void(HWND)> ways[] = {
        [](HWND dialog) { PostMessageA(GetDlgItem(dialog, IDOK), WM_KEYDOWN, VK_ESCAPE, 1); },
        [](HWND dialog) { SendMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    for (const auto& leave : ways) {
        const test::WhileOpen user(leave);
        EXPECT_EQ(scheduler::AboutDialog().runModal(nullptr), IDCANCEL);
    }
}

} // namespace
