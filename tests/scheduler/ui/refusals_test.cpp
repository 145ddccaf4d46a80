// The platform refuses one call after another of those by which the main window is made, shown and used: the
// program goes on without what it did not get, or says that there is no window, and loses nothing.

#include "lib/base/base.h"
#include "lib/base/stackalignment.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/ui/dialogs.h"
#include "scheduler/ui/framework/fonts.h"
#include "scheduler/ui/framework/hintwindow.h"
#include "scheduler/ui/framework/messagepump.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/mainwindow.h"
#include "scheduler/ui/startup.h"
#include "tests/scheduler/ui/simulatedmessagebox.h"
#include "tests/support/allocations.h"
#include "tests/support/gdiobjects.h"
#include "tests/support/handlecount.h"
#include "tests/support/importedfunctions.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace {

/// The one call that fails now; of windows, that of this class.
std::string refused;
int refusals = 0;

bool refuses(const char* name) {
    if (refused != name)
        return false;
    ++refusals;
    return true;
}

/// Memory that runs out while this call is made.
void runOutOfMemoryIn(const char* name) {
    if (refuses((std::string(name) + ", no memory").c_str()))
        throw std::bad_alloc();
}

template<class Function>
Function platform(const char* name, const char* library = "user32.dll") {
    return test::platformFunction<Function>(library, name);
}

HWND WINAPI makeWindow(DWORD extendedStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y,
                       int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
    static const auto original = platform<decltype(&CreateWindowExA)>("CreateWindowExA");
    return refuses(className) ? nullptr
                              : original(extendedStyle, className, title, style, x, y, width, height, parent,
                                         menu, instance, parameter);
}

ATOM WINAPI registerClass(const WNDCLASSEXA* description) {
    static const auto original = platform<decltype(&RegisterClassExA)>("RegisterClassExA");
    return refuses("RegisterClassExA") ? ATOM{0} : original(description);
}

HMENU WINAPI loadMenu(HINSTANCE instance, LPCSTR name) {
    static const auto original = platform<decltype(&LoadMenuA)>("LoadMenuA");
    runOutOfMemoryIn("LoadMenuA");
    return refuses("LoadMenuA") ? nullptr : original(instance, name);
}

HANDLE WINAPI loadImage(HINSTANCE instance, LPCSTR name, UINT type, int width, int height, UINT flags) {
    static const auto original = platform<decltype(&LoadImageA)>("LoadImageA");
    return refuses("LoadImageA") ? nullptr : original(instance, name, type, width, height, flags);
}

UINT_PTR WINAPI setTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    static const auto original = platform<decltype(&SetTimer)>("SetTimer");
    runOutOfMemoryIn("SetTimer");
    return refuses("SetTimer") ? 0 : original(window, id, milliseconds, procedure);
}

HHOOK WINAPI setHook(int kind, HOOKPROC procedure, HINSTANCE library, DWORD thread) {
    static const auto original = platform<decltype(&SetWindowsHookExA)>("SetWindowsHookExA");
    return refuses("SetWindowsHookExA") ? nullptr : original(kind, procedure, library, thread);
}

int icons = 0;

BOOL WINAPI notifyShell(DWORD message, PNOTIFYICONDATAA record) {
    static const auto original = platform<decltype(&Shell_NotifyIconA)>("Shell_NotifyIconA", "shell32.dll");
    icons += message == NIM_ADD ? 1 : message == NIM_DELETE ? -1 : 0;
    return refuses("Shell_NotifyIconA") ? FALSE : original(message, record);
}

HFONT WINAPI makeFont(const LOGFONTA* description) {
    static const auto original = platform<decltype(&CreateFontIndirectA)>("CreateFontIndirectA", "gdi32.dll");
    return refuses("CreateFontIndirectA") ? nullptr : original(description);
}

HDC WINAPI makeContext(HDC like) {
    static const auto original = platform<decltype(&CreateCompatibleDC)>("CreateCompatibleDC", "gdi32.dll");
    return refuses("CreateCompatibleDC") ? nullptr : original(like);
}

HBITMAP WINAPI makeBitmap(HDC like, int width, int height) {
    static const auto original =
        platform<decltype(&CreateCompatibleBitmap)>("CreateCompatibleBitmap", "gdi32.dll");
    return refuses("CreateCompatibleBitmap") ? nullptr : original(like, width, height);
}

HRGN WINAPI makeRegion(int left, int top, int right, int bottom, int width, int height) {
    static const auto original = platform<decltype(&CreateRoundRectRgn)>("CreateRoundRectRgn", "gdi32.dll");
    return refuses("CreateRoundRectRgn") ? nullptr : original(left, top, right, bottom, width, height);
}

/// The program's last call before its message loop: what is posted now is what the loop finds.
HACCEL WINAPI loadAccelerators(HINSTANCE instance, LPCSTR name) {
    static const auto original = platform<decltype(&LoadAcceleratorsA)>("LoadAcceleratorsA");
    const HWND window = FindWindowA(nullptr, base::applicationName.c_str());
    PostMessageA(window, WM_COMMAND, IDM_EXIT, 0);
    return refuses("LoadAcceleratorsA") ? nullptr : original(instance, name);
}

/// Every start of the program in this process is that of the only copy.
HANDLE WINAPI makeMutex(LPSECURITY_ATTRIBUTES, BOOL, LPCSTR) {
    SetLastError(ERROR_SUCCESS);
    return nullptr;
}

HWND WINAPI makeDialog(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    static const auto original = platform<decltype(&CreateDialogParamA)>("CreateDialogParamA");
    return refuses("CreateDialogParamA") ? nullptr : original(instance, name, owner, procedure, parameter);
}

INT_PTR WINAPI makeSheet(LPCPROPSHEETHEADERA) {
    return refuses("PropertySheetA, -1") ? -1 : 0;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(CreateWindowExA, "_CreateWindowExA@48", makeWindow);
SCHEDULER_REPLACE_IMPORT(RegisterClassExA, "_RegisterClassExA@4", registerClass);
SCHEDULER_REPLACE_IMPORT(LoadMenuA, "_LoadMenuA@8", loadMenu);
SCHEDULER_REPLACE_IMPORT(LoadAcceleratorsA, "_LoadAcceleratorsA@8", loadAccelerators);
SCHEDULER_REPLACE_IMPORT(CreateMutexA, "_CreateMutexA@12", makeMutex);
SCHEDULER_REPLACE_IMPORT(LoadImageA, "_LoadImageA@24", loadImage);
SCHEDULER_REPLACE_IMPORT(SetTimer, "_SetTimer@16", setTimer);
SCHEDULER_REPLACE_IMPORT(SetWindowsHookExA, "_SetWindowsHookExA@16", setHook);
SCHEDULER_REPLACE_IMPORT(Shell_NotifyIconA, "_Shell_NotifyIconA@8", notifyShell);
SCHEDULER_REPLACE_IMPORT(CreateFontIndirectA, "_CreateFontIndirectA@4", makeFont);
SCHEDULER_REPLACE_IMPORT(CreateCompatibleDC, "_CreateCompatibleDC@4", makeContext);
SCHEDULER_REPLACE_IMPORT(CreateCompatibleBitmap, "_CreateCompatibleBitmap@12", makeBitmap);
SCHEDULER_REPLACE_IMPORT(CreateRoundRectRgn, "_CreateRoundRectRgn@24", makeRegion);
SCHEDULER_REPLACE_IMPORT(CreateDialogParamA, "_CreateDialogParamA@20", makeDialog);
SCHEDULER_REPLACE_IMPORT(PropertySheetA, "_PropertySheetA@4", makeSheet);

namespace scheduler {
namespace {

/// Starts the main window, uses it and ends it, all but the message loop's own waiting.
bool live() {
    MainWindow window;
    if (!window.start("/s", SW_SHOWNORMAL))
        return false;
    const HWND handle = window.handle();
    SendMessageA(handle, WM_TIMER, 1, 0);
    for (const int command : {IDM_DISPLAY, IDM_SUSPEND, IDM_SUSPEND, IDM_TEST, IDM_CLOSE})
        SendMessageA(handle, WM_COMMAND, static_cast<WPARAM>(command), 0);
    PostMessageA(handle, WM_COMMAND, IDM_EXIT, 0);
    return framework::MessagePump::instance().runMainLoop() == 0;
}

/// Nothing is lost by doing it often. What the platform makes once and keeps does not count.
template<class Action>
void expectNothingLostBy(const char* name, const Action& act) {
    SCOPED_TRACE(name);
    constexpr unsigned times = 8;
    refusals = 0;
    refused = name;
    act();
    act();
    EXPECT_GT(refusals, 0) << "nothing was refused";
    const unsigned handles = test::handleCount();
    const unsigned gdiObjects = test::gdiObjectCount();
    for (unsigned time = 0; time < times; ++time)
        act();
    EXPECT_LT(test::handleCount(), handles + times);
    EXPECT_LT(test::gdiObjectCount(), gdiObjects + times);
    refused.clear();
}

TEST(MainWindowRefusals, WithoutTheWindowItsListItsMenuOrItsTimerThereIsNoProgram) {
    for (const char* const name : {"scheduler", WC_LISTVIEWA, "LoadMenuA", "SetTimer"}) {
        expectNothingLostBy(name, [] { EXPECT_FALSE(live()); });
        EXPECT_TRUE(live()) << "another attempt";
    }
}

TEST(MainWindowRefusals, WithoutWhatIsNotNeededTheProgramRuns) {
    for (const char* const name : {"LoadImageA", "Shell_NotifyIconA", "SetWindowsHookExA"})
        expectNothingLostBy(name, [] { EXPECT_TRUE(live()); });
}

void expectAFailedStart() {
    test::shownMessages.clear();
    icons = 0;
    EXPECT_EQ(runProgram("/s", SW_SHOWNORMAL), 1);
    ASSERT_EQ(test::shownMessages.size(), 1U);
    EXPECT_EQ(test::shownMessages[0].text, "A system error prevented the scheduler from starting.");
    EXPECT_EQ(test::shownMessages[0].caption, "Corvane Scheduler");
    EXPECT_EQ(icons, 0) << "one is left behind";
}

TEST(ProgramRefusals, AStartThatFailsIsReportedOnce) {
    for (const char* const name :
         {"scheduler", WC_LISTVIEWA, "LoadMenuA", "LoadMenuA, no memory", "SetTimer", "SetTimer, no memory"})
        expectNothingLostBy(name, &expectAFailedStart);
}

TEST(ProgramRefusals, AStartWithoutMemoryForTheWindowIsReported) {
    const test::RefusedAllocations refusing(sizeof(MainWindow));
    expectAFailedStart();
}

TEST(ProgramRefusals, WithoutAcceleratorsTheProgramRuns) {
    test::shownMessages.clear();
    expectNothingLostBy("LoadAcceleratorsA", [] { EXPECT_EQ(runProgram("/s", SW_SHOWNORMAL), 0); });
    EXPECT_TRUE(test::shownMessages.empty());
}

CALLED_BY_PLATFORM BOOL CALLBACK paintAndClose(HWND window, LPARAM) {
    if (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW) {
        UpdateWindow(window);
        SendMessageA(window, WM_CLOSE, 0, 0);
    }
    return TRUE;
}

TEST(HintRefusals, AHintIsShownWithoutItsPicture) {
    for (const char* const name : {"CreateCompatibleDC", "CreateCompatibleBitmap", "CreateRoundRectRgn"})
        expectNothingLostBy(name, [] {
            framework::Hint hint;
            hint.text = "a text";
            EXPECT_TRUE(framework::HintWindow::show(nullptr, hint));
            EnumThreadWindows(GetCurrentThreadId(), &paintAndClose, 0);
        });
}

TEST(FontRefusals, AStockFontStandsIn) {
    refused = "CreateFontIndirectA";
    EXPECT_NE(framework::messageFont(), nullptr);
    refused.clear();
}

TEST(ClassRefusals, AClassIsRegisteredByTheNextAttempt) {
    class Plain : public framework::Window {};
    framework::WindowClass windowClass;
    windowClass.description().style = CS_BYTEALIGNCLIENT; // nobody else's
    refused = "RegisterClassExA";
    Plain first;
    EXPECT_FALSE(first.create(windowClass, {}));
    EXPECT_EQ(first.handle(), nullptr);
    refused.clear();
    EXPECT_TRUE(first.create(windowClass, {}));
}

TEST(DialogRefusals, ADialogThatCannotBeMadeIsReportedAndItsOwnerGoesOn) {
    class Plain : public framework::Window {};
    framework::WindowClass windowClass;
    Plain owner;
    ASSERT_TRUE(owner.create(windowClass, {}));
    base::applicationName = "Corvane Scheduler";
    Preferences preferences;
    const auto edit = [&] {
        EXPECT_FALSE(editEntry(owner.handle(), {}, {}, std::nullopt, base::systemClock()));
    };
    const auto prefer = [&] { EXPECT_FALSE(editPreferences(owner.handle(), preferences)); };
    const auto tellAbout = [&] { showAbout(owner.handle()); };
    for (const auto& [name, act] : {std::pair<const char*, std::function<void()>>{"PropertySheetA, -1", edit},
                                    {"PropertySheetA, 0", edit},
                                    {"CreateDialogParamA", prefer},
                                    {"CreateDialogParamA", tellAbout}}) {
        SCOPED_TRACE(name);
        refused = name;
        test::shownMessages.clear();
        act();
        ASSERT_EQ(test::shownMessages.size(), 1U);
        EXPECT_EQ(test::shownMessages[0].text, "A system error prevented the dialog from opening.");
        EXPECT_EQ(test::shownMessages[0].caption, "Corvane Scheduler");
        EXPECT_EQ(test::shownMessages[0].owner, owner.handle());
        EXPECT_TRUE(IsWindowEnabled(owner.handle()));
    }
    refused.clear();
}

} // namespace
} // namespace scheduler
