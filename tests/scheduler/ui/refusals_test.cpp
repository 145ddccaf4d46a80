// If a platform call fails, the program runs without its result or reports the failure.

#include "lib/base/base.h"
#include "resources/ids.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/framework/fonts.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/mainwindow.h"
#include "scheduler/ui/startup.h"
#include "tests/scheduler/ui/framework/pumping.h"
#include "tests/scheduler/ui/listwindow.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/allocations.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/handlecount.h"

#include <new>
#include <optional>
#include <tuple>

namespace {

using framework::Window;
using framework::WindowClass;
using test::Override;

/// Name of the call that fails, or of the class whose windows cannot be created.
std::string refused;
int refusals = 0;

bool refuses(const std::string& name) {
    refusals += name == refused;
    return name == refused;
}

template<class Call>
class Refusable : public Override<Call> {
public:
    Refusable()
        : Override<Call>([](auto... arguments) {
              if (refuses(std::string(Call::name) + ", no memory"))
                  throw std::bad_alloc();
              return refuses(Call::name) ? decltype(Call::original(arguments...)){}
                                         : Call::original(arguments...);
          }) {}
};

class Refusals : public testing::Test {
protected:
    Refusals() { base::applicationName = "Corvane Scheduler"; }
    ~Refusals() override { refused.clear(); }

    /// The first two calls of `act` fill the platform's caches.
    template<class Action>
    static void expectNoLeak(const char* name, const Action& act) {
        SCOPED_TRACE(name);
        constexpr unsigned times = 8;
        refusals = 0;
        refused = name;
        act();
        act();
        EXPECT_GT(refusals, 0) << "no call failed";
        const unsigned handles = test::handleCount();
        const unsigned gdiObjects = test::gdiObjectCount();
        for (unsigned time = 0; time < times; ++time)
            act();
        EXPECT_LT(test::handleCount(), handles + times);
        EXPECT_LT(test::gdiObjectCount(), gdiObjects + times);
        refused.clear();
    }

    static bool startUseAndExit() {
        scheduler::MainWindow window;
        if (!window.start("/s", SW_SHOWNORMAL))
            return false;
        SendMessageA(window.handle(), WM_TIMER, 1, 0);
        for (const int command : {IDM_DISPLAY, IDM_SUSPEND, IDM_SUSPEND, IDM_TEST, IDM_CLOSE})
            SendMessageA(window.handle(), WM_COMMAND, static_cast<WPARAM>(command), 0);
        PostMessageA(window.handle(), WM_COMMAND, IDM_EXIT, 0);
        return framework::MessagePump::instance().runMainLoop() == 0;
    }

    void expectOneBox(const char* text, HWND owner) {
        ASSERT_EQ(boxes_.shown.size(), 1U);
        EXPECT_EQ(boxes_.shown[0].owner, owner);
        EXPECT_EQ(boxes_.shown[0].text, text);
        EXPECT_EQ(boxes_.shown[0].caption, "Corvane Scheduler");
        boxes_.shown.clear();
    }

    void expectFailedStart() {
        icons_ = 0;
        EXPECT_EQ(scheduler::runProgram("/s", SW_SHOWNORMAL), 1);
        expectOneBox("A system error prevented the scheduler from starting.", nullptr);
        EXPECT_EQ(icons_, 0) << "an icon is left";
    }

    test::MessageBoxes boxes_;

private:
    int icons_ = 0;
    std::tuple<Refusable<test::RegisterClassExACall>, Refusable<test::LoadMenuACall>,
               Refusable<test::LoadImageACall>, Refusable<test::SetTimerCall>,
               Refusable<test::SetWindowsHookExACall>, Refusable<test::CreateFontIndirectACall>,
               Refusable<test::CreateCompatibleDCCall>, Refusable<test::CreateCompatibleBitmapCall>,
               Refusable<test::CreateRoundRectRgnCall>, Refusable<test::CreateDialogParamACall>>
        calls_;
    Override<test::CreateWindowExACall> windows_{[](DWORD extendedStyle, LPCSTR name, auto... rest) -> HWND {
        return refuses(name) ? nullptr : test::CreateWindowExACall::original(extendedStyle, name, rest...);
    }};
    Override<test::Shell_NotifyIconACall> shell_{[this](DWORD message, NOTIFYICONDATAA* record) {
        icons_ += message == NIM_ADD ? 1 : message == NIM_DELETE ? -1 : 0;
        return refuses("Shell_NotifyIconA") ? FALSE : test::Shell_NotifyIconACall::original(message, record);
    }};
    /// Posts the Exit command, because LoadAccelerators is the last call before the message loop.
    Override<test::LoadAcceleratorsACall> accelerators_{[](HINSTANCE instance, LPCSTR name) {
        PostMessageA(FindWindowA(nullptr, "Corvane Scheduler"), WM_COMMAND, IDM_EXIT, 0);
        return refuses("LoadAcceleratorsA") ? nullptr : test::LoadAcceleratorsACall::original(instance, name);
    }};
    Override<test::CreateMutexACall> mutex_{[](auto...) {
        SetLastError(ERROR_SUCCESS);
        return nullptr;
    }};
    Override<test::PropertySheetACall> sheets_{
        [](LPCPROPSHEETHEADERA) { return INT_PTR{refuses("PropertySheetA, -1") ? -1 : 0}; }};
};

// Must run first, because the font is created only once.
TEST_F(Refusals, AStockFontReplacesAFontThatCannotBeCreated) {
    refused = "CreateFontIndirectA";
    refusals = 0;
    EXPECT_EQ(framework::messageFont(), GetStockObject(DEFAULT_GUI_FONT));
    EXPECT_EQ(refusals, 1) << "another test ran first";
}

TEST_F(Refusals, TheProgramDoesNotStartWithoutItsWindowListMenuOrTimer) {
    for (const char* const name : {"scheduler", WC_LISTVIEWA, "LoadMenuA", "SetTimer"}) {
        expectNoLeak(name, [] { EXPECT_FALSE(startUseAndExit()); });
        EXPECT_TRUE(startUseAndExit()) << "the next attempt";
    }
}

TEST_F(Refusals, TheProgramRunsWithoutOptionalResources) {
    for (const char* const name : {"LoadImageA", "Shell_NotifyIconA", "SetWindowsHookExA"})
        expectNoLeak(name, [] { EXPECT_TRUE(startUseAndExit()); });
    expectNoLeak("LoadAcceleratorsA", [] { EXPECT_EQ(scheduler::runProgram("/s", SW_SHOWNORMAL), 0); });
    EXPECT_TRUE(boxes_.shown.empty());
}

TEST_F(Refusals, AFailedStartIsReportedOnce) {
    for (const char* const name :
         {"scheduler", WC_LISTVIEWA, "LoadMenuA", "LoadMenuA, no memory", "SetTimer", "SetTimer, no memory"})
        expectNoLeak(name, [this] { expectFailedStart(); });
    const test::RefusedAllocations refusing(sizeof(scheduler::MainWindow));
    expectFailedStart();
}

TEST_F(Refusals, AHintIsShownWithoutItsBitmapOrRegion) {
    for (const char* const name : {"CreateCompatibleDC", "CreateCompatibleBitmap", "CreateRoundRectRgn"})
        expectNoLeak(name, [] {
            framework::Hint hint;
            hint.text = "a text";
            EXPECT_TRUE(framework::HintWindow::show(nullptr, hint));
            for (const HWND window : test::hintWindows()) {
                UpdateWindow(window);
                SendMessageA(window, WM_CLOSE, 0, 0);
            }
        });
}

TEST_F(Refusals, AWindowClassIsRegisteredByTheNextAttempt) {
    WindowClass windowClass;
    windowClass.description().style = CS_BYTEALIGNCLIENT; // no other class has this style
    refused = "RegisterClassExA";
    Window first;
    EXPECT_FALSE(first.create(windowClass, {}));
    EXPECT_EQ(first.handle(), nullptr);
    refused.clear();
    EXPECT_TRUE(first.create(windowClass, {}));
}

TEST_F(Refusals, ADialogThatCannotBeCreatedIsReportedAndItsOwnerReenabled) {
    WindowClass windowClass;
    Window owner;
    ASSERT_TRUE(owner.create(windowClass, {}));
    scheduler::Preferences preferences;
    const std::function<void()> edit = [&] {
        EXPECT_FALSE(scheduler::editEntry(owner.handle(), {}, {}, std::nullopt, base::systemClock()));
    };
    const std::function<void()> editPreferences = [&] {
        EXPECT_FALSE(scheduler::editPreferences(owner.handle(), preferences));
    };
    const std::function<void()> showAbout = [&] { scheduler::showAbout(owner.handle()); };
    for (const auto& [name, act] : {std::pair{"PropertySheetA, -1", edit},
                                    {"PropertySheetA, 0", edit},
                                    {"CreateDialogParamA", editPreferences},
                                    {"CreateDialogParamA", showAbout}}) {
        SCOPED_TRACE(name);
        refused = name;
        act();
        expectOneBox("A system error prevented the dialog from opening.", owner.handle());
        EXPECT_TRUE(IsWindowEnabled(owner.handle()));
    }
}

} // namespace
