// Which window owns the dialogs that the main window opens while another one is active.
#include "lib/base/base.h"
#include "lib/base/registry.h"
#include "resources/ids.h"
#include "scheduler/ui/mainwindow.h"
#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/whileopen.h"

#include <gtest/gtest.h>

namespace {

TEST(ActiveOwner, AboutAndPreferencesAreOwnedByTheActiveWindow) {
    base::applicationName = "Corvane Scheduler";
    base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("", SW_SHOWNORMAL));
    test::ProbeWindow other;
    ASSERT_TRUE(other.open(WS_POPUP | WS_VISIBLE));
    for (const HWND active : {other.handle(), window.handle()})
        for (const WPARAM command : {WPARAM{IDM_ABOUT}, WPARAM{IDM_PREFERENCES}}) {
            SetActiveWindow(active);
            ASSERT_EQ(GetActiveWindow(), active);
            const test::WhileOpen user([&](HWND dialog) {
                EXPECT_EQ(GetWindow(dialog, GW_OWNER), active) << command;
                EXPECT_FALSE(IsWindowEnabled(active)) << command;
                SendMessageA(dialog, WM_CLOSE, 0, 0);
            });
            SendMessageA(window.handle(), WM_COMMAND, command, 0);
        }
}

} // namespace
