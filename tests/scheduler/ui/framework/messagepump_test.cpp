#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/window.h"
#include "scheduler/ui/framework/windowclass.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/patience.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace {

std::vector<UINT> threadTimers; ///< the milliseconds of those without a window

UINT_PTR WINAPI notedTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    static const auto original = test::platformFunction<decltype(&SetTimer)>("user32.dll", "SetTimer");
    if (!window)
        threadTimers.push_back(milliseconds);
    return original(window, id, milliseconds, procedure);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(SetTimer, "_SetTimer@16", notedTimer);

namespace {

using framework::Handled;
using framework::Message;
using framework::MessagePump;
using framework::Window;

class PumpedWindow : public Window {
public:
    std::function<Handled(const Message&)> handler;
    std::function<bool(MSG&)> translator;
    std::function<void()> idled;
    int idlePasses = 0;

    PumpedWindow() {
        framework::WindowClass windowClass;
        framework::WindowParameters parameters;
        parameters.style = WS_OVERLAPPEDWINDOW;
        create(windowClass, parameters);
    }
    Handled onMessage(const Message& message) override { return handler ? handler(message) : std::nullopt; }
    bool preTranslate(MSG& message) override { return translator && translator(message); }
    void onIdle() override {
        ++idlePasses;
        if (idled)
            idled();
    }
};

TEST(WantsIdlePass, OnlyForWhatMayChangeControls) {
    for (const UINT id : {UINT{WM_SETTEXT}, UINT{WM_NOTIFY}, UINT{WM_STYLECHANGED}, UINT{WM_CHAR},
                          UINT{WM_COMMAND}, UINT{WM_PARENTNOTIFY}, UINT{1025}, UINT{WM_APP}, UINT{0xFFFF}})
        EXPECT_TRUE(framework::wantsIdlePass(id)) << id;
    for (const UINT id :
         {UINT{WM_USER}, UINT{WM_TIMER}, UINT{WM_PAINT}, UINT{WM_MOUSEMOVE}, UINT{WM_KEYDOWN}})
        EXPECT_FALSE(framework::wantsIdlePass(id)) << id;
}

TEST(MessagePump, TheMainLoopEndsWithTheExitCode) {
    PostQuitMessage(17);
    EXPECT_EQ(MessagePump::instance().runMainLoop(), 17);
}

TEST(MessagePump, TheMainLoopWakesUpByItself) {
    // Without a message of anyone else, the loop's own timer brings this one to its end.
    PumpedWindow window;
    int messages = 0;
    MessagePump::instance().setInputObserver([&](const MSG& message) {
        messages += message.message == WM_TIMER;
        if (messages == 3)
            PostQuitMessage(0);
    });
    threadTimers.clear();
    const DWORD start = GetTickCount();
    MessagePump::instance().runMainLoop();
    MessagePump::instance().setInputObserver(nullptr);
    EXPECT_EQ(threadTimers, std::vector<UINT>{200});
    EXPECT_GE(GetTickCount() - start, 500U);
    EXPECT_EQ(window.idlePasses, 0) << "a timer is nothing that the user did";
}

TEST(MessagePump, TheIdlePassComesOnceTheQueueIsEmpty) {
    PumpedWindow window;
    int passesAtLast = -1;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == WM_APP + 1)
            passesAtLast = window.idlePasses;
        if (message.id == WM_TIMER)
            window.endModal(1);
        return std::nullopt;
    };
    for (int i = 0; i < 5; ++i)
        PostMessageA(window.handle(), WM_COMMAND, 1, 0);
    PostMessageA(window.handle(), WM_APP + 1, 0, 0);
    // The end comes a moment behind the first pass, so that there is time for a second.
    window.idled = [&] { SetTimer(window.handle(), 1, 50, nullptr); };
    SetTimer(window.handle(), 2, test::patience, nullptr);
    window.beginModal();
    EXPECT_EQ(MessagePump::instance().runModalLoop(window), 1);
    EXPECT_EQ(passesAtLast, 0) << "messages were still waiting";
    EXPECT_EQ(window.idlePasses, 1);
    KillTimer(window.handle(), 1);
    KillTimer(window.handle(), 2);
}

TEST(MessagePump, AModalLoopEndsWithItsObjectsResult) {
    PumpedWindow window;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == WM_APP + 1)
            window.endModal(static_cast<int>(message.wParam));
        return std::nullopt;
    };
    for (const int result : {1, 2}) {
        window.beginModal();
        PostMessageA(window.handle(), WM_APP + 1, static_cast<WPARAM>(result), 0);
        EXPECT_EQ(MessagePump::instance().runModalLoop(window), result);
    }
}

TEST(MessagePump, WhatTheModalObjectTakesIsNotDispatched) {
    PumpedWindow window;
    int dispatched = 0;
    window.handler = [&](const Message& message) -> Handled {
        dispatched += message.id == WM_APP + 1;
        return std::nullopt;
    };
    window.translator = [&](MSG& message) {
        if (message.message != WM_APP + 1)
            return false;
        window.endModal(2);
        return true;
    };
    PostMessageA(window.handle(), WM_APP + 1, 0, 0);
    window.beginModal();
    EXPECT_EQ(MessagePump::instance().runModalLoop(window), 2);
    EXPECT_EQ(dispatched, 0);
}

TEST(MessagePump, AQuitInAModalLoopIsLeftToTheMainLoop) {
    PumpedWindow window;
    PostQuitMessage(5);
    window.beginModal();
    MessagePump::instance().runModalLoop(window);
    EXPECT_EQ(MessagePump::instance().runMainLoop(), 5);
}

TEST(MessagePump, AcceleratorsBecomeCommandsOfTheMessagesWindow) {
    PumpedWindow window;
    int command = 0;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == WM_COMMAND) {
            command = LOWORD(message.wParam);
            window.endModal(1);
        }
        return std::nullopt;
    };
    ACCEL keys{FVIRTKEY, VK_F9, 4711};
    const HACCEL table = CreateAcceleratorTableA(&keys, 1);
    MessagePump::instance().setAccelerators(table);
    PostMessageA(window.handle(), WM_KEYDOWN, VK_F9, 0);
    window.beginModal();
    MessagePump::instance().runModalLoop(window);
    EXPECT_EQ(command, 4711);
    MessagePump::instance().setAccelerators(nullptr);
    DestroyAcceleratorTable(table);
}

TEST(MessagePump, WhatIsOnlyEverSentDoesNotArriveWhenItIsPosted) {
    PumpedWindow window;
    std::vector<UINT> arrived;
    window.handler = [&](const Message& message) {
        arrived.push_back(message.id);
        if (message.id == WM_APP)
            PostQuitMessage(0);
        return Handled(0);
    };
    for (const UINT id : {UINT{WM_NOTIFY}, UINT{WM_DESTROY}, UINT{WM_NCDESTROY}, UINT{WM_APP}})
        PostMessageA(window.handle(), id, 0, 4);
    MessagePump::instance().runMainLoop();
    EXPECT_EQ(arrived, (std::vector<UINT>{WM_NULL, WM_NULL, WM_NULL, WM_APP}));
    EXPECT_EQ(Window::of(window.handle()), &window);

    arrived.clear();
    SendMessageA(window.handle(), WM_NOTIFY, 0, 0);
    EXPECT_EQ(arrived, std::vector<UINT>{WM_NOTIFY});
}

TEST(MessagePump, NorDoesItInALoopOfThePlatformsThatAMessageBegins) {
    PumpedWindow window;
    std::vector<UINT> arrived;
    window.handler = [&](const Message& message) -> Handled {
        if (message.id == WM_APP) {
            PostMessageA(window.handle(), WM_NOTIFY, 0, 4);
            MSG taken{};
            while (PeekMessageA(&taken, window.handle(), 0, 0, PM_REMOVE))
                DispatchMessageA(&taken);
            PostQuitMessage(0);
        } else {
            arrived.push_back(message.id);
        }
        return 0;
    };
    PostMessageA(window.handle(), WM_APP, 0, 0);
    MessagePump::instance().runMainLoop();
    EXPECT_EQ(arrived, std::vector<UINT>{WM_NULL});

    // Sent by another thread, as by another program, it does not come through the pump.
    arrived.clear();
    std::thread other([&] { SendMessageA(window.handle(), WM_APP, 0, 0); });
    MessagePump::instance().runMainLoop();
    other.join();
    EXPECT_EQ(arrived, std::vector<UINT>{WM_NULL});
}

} // namespace
