#include "lib/base/stackalignment.h"
#include "scheduler/ui/framework/messagepump.h"
#include "tests/scheduler/ui/mainwindowtest.h"
#include "tests/support/timeout.h"

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
    const UINT_PTR timer = SetTimer(nullptr, 0, test::timeout, &endLoops);
    PostMessageA(list(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list()), 0);
    EXPECT_EQ(framework::MessagePump::instance().runMainLoop(), 0);
    KillTimer(nullptr, timer);
}

TEST_F(MenuExit, StartsNothingAndAsksNothingMoreUntilTheLoopsEnd) {
    save({entry("run:work")});
    boxes.answer = [](const auto&) { return IDYES; };
    const test::Override<test::PostQuitMessageCall> quit([](int) {});
    start();
    command(IDM_EXIT);
    tick();
    select(0);
    for (const int id : {IDM_RUN, IDM_EXIT})
        command(id);
    send(WM_ENDSESSION, TRUE);
    EXPECT_EQ(nextRun(0), "Now");
    EXPECT_EQ(boxes.shown.size(), 1U);
}

} // namespace
