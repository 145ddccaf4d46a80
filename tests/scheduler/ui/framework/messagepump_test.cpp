#include "scheduler/ui/framework/messagepump.h"
#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/platformcalls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace {

using framework::Handled;
using framework::Message;
using test::Override;
using test::probe;

class MessagePump : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(window.open());
        window.handler = [this](const Message& message) -> Handled {
            arrived.push_back(message.id);
            return handler ? handler(message) : std::nullopt;
        };
        window.idled = [this] { ++idlePasses; };
    }
    int runModalLoop() {
        window.beginModal();
        return pump.runModalLoop(window);
    }
    void post(UINT id, WPARAM wParam = 0, LPARAM lParam = 0) const {
        PostMessageA(window.handle(), id, wParam, lParam);
    }

    framework::MessagePump& pump = framework::MessagePump::instance();
    test::ProbeWindow window;
    std::function<Handled(const Message&)> handler;
    std::vector<UINT> arrived;
    int idlePasses = 0;
};

TEST_F(MessagePump, OnlyMessagesThatMayChangeControlsRequestAnIdlePass) {
    for (const UINT id : {UINT{WM_SETTEXT}, UINT{WM_NOTIFY}, UINT{WM_STYLECHANGED}, UINT{WM_CHAR},
                          UINT{WM_COMMAND}, UINT{WM_PARENTNOTIFY}, UINT{1025}, UINT{WM_APP}, UINT{0xFFFF}})
        EXPECT_TRUE(framework::wantsIdlePass(id)) << id;
    for (const UINT id :
         {UINT{WM_USER}, UINT{WM_TIMER}, UINT{WM_PAINT}, UINT{WM_MOUSEMOVE}, UINT{WM_KEYDOWN}})
        EXPECT_FALSE(framework::wantsIdlePass(id)) << id;
}

TEST_F(MessagePump, TheMainLoopHasA200MillisecondTimerAndReturnsTheExitCode) {
    std::vector<UINT> threadTimers;
    const Override<test::SetTimerCall> timers([&](HWND of, UINT_PTR id, UINT milliseconds, TIMERPROC act) {
        if (!of)
            threadTimers.push_back(milliseconds);
        return test::SetTimerCall::original(of, id, milliseconds, act);
    });
    pump.setInputObserver([](const MSG& message) {
        if (message.message == WM_TIMER && !message.hwnd)
            PostQuitMessage(17);
    });
    EXPECT_EQ(pump.runMainLoop(), 17);
    pump.setInputObserver(nullptr);
    EXPECT_EQ(threadTimers, std::vector<UINT>{200});
    EXPECT_EQ(idlePasses, 0);
}

TEST_F(MessagePump, RunsOneIdlePassWhenTheQueueIsEmpty) {
    int passesAtLast = -1;
    int emptyQueues = 0;
    handler = [&](const Message& message) -> Handled {
        if (message.id == probe)
            passesAtLast = idlePasses;
        if (message.id == WM_USER && ++emptyQueues == 3)
            window.endModal(1);
        return std::nullopt;
    };
    const Override<test::GetMessageACall> neverEmpty([&](MSG* message, auto... rest) {
        MSG waiting{};
        if (!PeekMessageA(&waiting, nullptr, 0, 0, PM_NOREMOVE))
            post(WM_USER);
        return test::GetMessageACall::original(message, rest...);
    });
    for (int i = 0; i < 5; ++i)
        post(WM_COMMAND, 1);
    post(probe);
    EXPECT_EQ(runModalLoop(), 1);
    EXPECT_EQ(passesAtLast, 0) << "messages were still waiting";
    EXPECT_EQ(idlePasses, 1);
}

TEST_F(MessagePump, AModalLoopReturnsTheResultAndSkipsMessagesThatItsObjectTranslates) {
    window.translator = [&](MSG& message) {
        if (message.message == probe)
            window.endModal(2);
        return message.message == probe;
    };
    post(probe);
    EXPECT_EQ(runModalLoop(), 2);
    EXPECT_THAT(arrived, testing::Not(testing::Contains(probe)));
}

TEST_F(MessagePump, AQuitMessageInAModalLoopReachesTheMainLoop) {
    PostQuitMessage(5);
    runModalLoop();
    EXPECT_EQ(pump.runMainLoop(), 5);
}

TEST_F(MessagePump, LoopsEndWhenGetMessageFails) {
    int gets = 0;
    const Override<test::GetMessageACall> failing([&](auto...) { return ++gets > 1 ? 0 : -1; });
    pump.runMainLoop();
    EXPECT_EQ(gets, 1);
    gets = 0;
    EXPECT_EQ(runModalLoop(), 0);
    EXPECT_EQ(gets, 1);
}

TEST_F(MessagePump, AcceleratorKeysBecomeCommandsOfTheirWindow) {
    handler = [&](const Message& message) -> Handled {
        if (message.id == WM_COMMAND && LOWORD(message.wParam) == 4711)
            post(WM_KEYDOWN, VK_F8);
        if (message.id == WM_KEYDOWN) {
            EXPECT_EQ(message.wParam, WPARAM{VK_F8}) << "not an accelerator";
            window.endModal(1);
        }
        return std::nullopt;
    };
    ACCEL keys{FVIRTKEY, VK_F9, 4711};
    const HACCEL table = CreateAcceleratorTableA(&keys, 1);
    pump.setAccelerators(table);
    post(WM_KEYDOWN, VK_F9);
    runModalLoop();
    EXPECT_THAT(arrived, testing::Contains(UINT{WM_COMMAND}));
    pump.setAccelerators(nullptr);
    DestroyAcceleratorTable(table);
}

TEST_F(MessagePump, DiscardsPostedMessagesThatAreOnlyEverSent) {
    handler = [&](const Message& message) {
        if (message.id == WM_APP)
            PostQuitMessage(0);
        return Handled(0);
    };
    for (const UINT id : {UINT{WM_NOTIFY}, UINT{WM_DESTROY}, UINT{WM_NCDESTROY}, UINT{WM_APP}})
        post(id, 0, 4);
    pump.runMainLoop();
    EXPECT_EQ(arrived, (std::vector<UINT>{WM_NULL, WM_NULL, WM_NULL, WM_APP}));
    EXPECT_EQ(framework::Window::of(window.handle()), &window);
    SendMessageA(window.handle(), WM_NOTIFY, 0, 0);
    EXPECT_EQ(arrived.back(), UINT{WM_NOTIFY});
}

TEST_F(MessagePump, PlatformLoopsDiscardPostedMessagesThatAreOnlyEverSent) {
    handler = [&](const Message& message) -> Handled {
        if (message.id == WM_APP) {
            post(WM_NOTIFY, 0, 4);
            MSG taken{};
            while (PeekMessageA(&taken, window.handle(), 0, 0, PM_REMOVE))
                DispatchMessageA(&taken);
            PostQuitMessage(0);
        }
        return 0;
    };
    post(WM_APP);
    pump.runMainLoop();
    EXPECT_EQ(arrived, (std::vector<UINT>{WM_APP, WM_NULL}));

    // A message sent by another thread bypasses the pump.
    arrived.clear();
    std::thread other([&] { SendMessageA(window.handle(), WM_APP, 0, 0); });
    pump.runMainLoop();
    other.join();
    EXPECT_EQ(arrived, (std::vector<UINT>{WM_APP, WM_NULL}));
}

} // namespace
