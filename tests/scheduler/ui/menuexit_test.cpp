#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/messagepump.h"
#include "tests/scheduler/ui/mainwindowtest.h"

#include <gtest/gtest.h>

namespace {

CALLED_BY_PLATFORM void CALLBACK endLoops(HWND, UINT, UINT_PTR, DWORD) {
    EndMenu();
    PostQuitMessage(1);
}

class MenuExit : public test::MainWindowTest {};

TEST_F(MenuExit, EndsTheProgramEvenWhenTheMenuIsJustOpening) {
    start("");
    const test::Override<test::TrackPopupMenuCall> menu([this](auto... arguments) {
        command(IDM_EXIT);
        return test::TrackPopupMenuCall::original(arguments...);
    });
    const UINT_PTR timeout = SetTimer(nullptr, 0, 20'000, &endLoops);
    PostMessageA(list(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list()), 0);
    EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 0);
    KillTimer(nullptr, timeout);
}

TEST_F(MenuExit, StartsNoProjectWhileTheMenuCloses) {
    save({entry("run:work")});
    boxes.answer = [](const auto&) { return IDYES; };
    const test::Override<test::PostQuitMessageCall> quit([](int) {});
    start();
    command(IDM_EXIT);
    tick();
    EXPECT_EQ(saved().at(0).running, 0);
    EXPECT_EQ(nextRun(0), "Now");
}

} // namespace
