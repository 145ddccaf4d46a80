#include "lib/base/base.h"
#include "lib/base/registry.h"
#include "lib/base/threads.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/ui/mainwindow.h"
#include "scheduler/ui/programtexts.h"
#include "tests/scheduler/ui/paintings.h"
#include "tests/support/eventlog.h"
#include "tests/support/importedfunctions.h"
#include "tests/support/systemcolours.h"

#include <windows.h>

#include <commctrl.h>
#include <process.h>
#include <shellapi.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

bool timersFail = false;
std::vector<std::pair<UINT_PTR, UINT>> timers; ///< of windows: ids and milliseconds
DWORD mainStyle = 0;                           ///< what the main window was created with
int icons = 0;
int helps = 0;
test::EventLog events; ///< of the start

int rowsWhenShown = 0; ///< those that the list has when the main window is shown

UINT_PTR WINAPI notedTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    static const auto original = test::platformFunction<decltype(&SetTimer)>("user32.dll", "SetTimer");
    if (!window)
        return original(window, id, milliseconds, procedure);
    timers.emplace_back(id, milliseconds);
    if (id == 1)
        events.emplace_back("timer set");
    return timersFail ? 0 : original(window, id, milliseconds, procedure);
}

HWND WINAPI notedCreation(DWORD extendedStyle, LPCSTR className, LPCSTR title, DWORD style, int x, int y,
                          int width, int height, HWND parent, HMENU menu, HINSTANCE instance,
                          LPVOID parameter) {
    static const auto original =
        test::platformFunction<decltype(&CreateWindowExA)>("user32.dll", "CreateWindowExA");
    if (!parent)
        mainStyle = style;
    return original(extendedStyle, className, title, style, x, y, width, height, parent, menu, instance,
                    parameter);
}

BOOL WINAPI countedHelp(HWND, LPCSTR file, UINT command, ULONG_PTR) {
    EXPECT_TRUE(std::string(file).ends_with("\\scheduler.hlp"));
    EXPECT_EQ(command, UINT{HELP_KEY});
    ++helps;
    return TRUE;
}

BOOL WINAPI countedIcon(DWORD message, NOTIFYICONDATAA*) {
    icons += message == NIM_ADD ? 1 : message == NIM_DELETE ? -1 : 0;
    if (message == NIM_ADD)
        events.emplace_back("icon added");
    return TRUE;
}

BOOL WINAPI notedShow(HWND window, int command) {
    static const auto original = test::platformFunction<decltype(&ShowWindow)>("user32.dll", "ShowWindow");
    if (!(GetWindowLongA(window, GWL_STYLE) & WS_CHILD)) {
        events.push_back("shown by " + std::to_string(command));
        rowsWhenShown = ListView_GetItemCount(GetDlgItem(window, IDC_SCHEDULE_LIST));
    }
    return original(window, command);
}

void WINAPI notedAcceptance(HWND window, BOOL accepts) {
    static const auto original =
        test::platformFunction<decltype(&DragAcceptFiles)>("shell32.dll", "DragAcceptFiles");
    if (accepts)
        events.emplace_back("files accepted");
    original(window, accepts);
}

bool messagesAreRefused = false;

UINT WINAPI messageUnlessRefused(LPCSTR name) {
    static const auto original =
        test::platformFunction<decltype(&RegisterWindowMessageA)>("user32.dll", "RegisterWindowMessageA");
    return messagesAreRefused ? 0 : original(name);
}

/// What a tick meets that nobody foresees: it is thrown once, where the schedule is to be saved.
bool unforeseen = false;

UINT WINAPI windowsUnlessUnforeseen(LPSTR buffer, UINT size) {
    static const auto original =
        test::platformFunction<decltype(&GetWindowsDirectoryA)>("kernel32.dll", "GetWindowsDirectoryA");
    if (std::exchange(unforeseen, false))
        throw std::runtime_error("unforeseen");
    return original(buffer, size);
}

DWORD threadStartMilliseconds = 0; ///< how long a thread takes to start; 0: it does not

std::uintptr_t simulatedThread(void(__cdecl*)(void*), unsigned, void*) {
    Sleep(threadStartMilliseconds);
    return threadStartMilliseconds == 0 ? base::threadFailed : 1;
}

std::vector<UINT_PTR> killedTimers;

BOOL WINAPI notedTimerEnd(HWND window, UINT_PTR id) {
    static const auto original = test::platformFunction<decltype(&KillTimer)>("user32.dll", "KillTimer");
    const BOOL killed = original(window, id);
    if (killed)
        killedTimers.push_back(id);
    return killed;
}

} // namespace

SCHEDULER_REPLACE_IMPORT(RegisterWindowMessageA, "_RegisterWindowMessageA@4", messageUnlessRefused);
SCHEDULER_REPLACE_IMPORT(GetWindowsDirectoryA, "_GetWindowsDirectoryA@8", windowsUnlessUnforeseen);
SCHEDULER_REPLACE_IMPORT(_beginthread, "__beginthread", simulatedThread);
SCHEDULER_REPLACE_IMPORT(KillTimer, "_KillTimer@8", notedTimerEnd);
SCHEDULER_REPLACE_IMPORT(SetTimer, "_SetTimer@16", notedTimer);
SCHEDULER_REPLACE_IMPORT(ShowWindow, "_ShowWindow@8", notedShow);
SCHEDULER_REPLACE_IMPORT(CreateWindowExA, "_CreateWindowExA@48", notedCreation);
SCHEDULER_REPLACE_IMPORT(WinHelpA, "_WinHelpA@16", countedHelp);
SCHEDULER_REPLACE_IMPORT(DragAcceptFiles, "_DragAcceptFiles@8", notedAcceptance);
SCHEDULER_REPLACE_IMPORT(Shell_NotifyIconA, "_Shell_NotifyIconA@8", countedIcon);

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class MainWindow : public testing::Test {
protected:
    MainWindow() {
        base::applicationName = "Corvane Scheduler";
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
        EXPECT_TRUE(scheduler::saveSchedule({}));
        timersFail = false;
        messagesAreRefused = false;
        timers.clear();
        killedTimers.clear();
        threadStartMilliseconds = 0;
        icons = 0;
        events.clear();
    }
};

TEST_F(MainWindow, TicksOnceASecondByItsTimerOneAndPaintsNothingThen) {
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("", SW_SHOWNOACTIVATE));
    EXPECT_THAT(timers, Contains(Pair(1U, 1000U)));
    EXPECT_EQ(icons, 1);
    const test::Paintings paintings(*framework::Window::of(GetDlgItem(window.handle(), IDC_SCHEDULE_LIST)));
    SendMessageA(window.handle(), WM_TIMER, 1, 0);
    EXPECT_EQ(paintings.count, 0);
}

TEST_F(MainWindow, ComesUpInOrder) {
    for (const int command : {SW_SHOWNORMAL, SW_HIDE}) {
        events.clear();
        scheduler::MainWindow window;
        ASSERT_TRUE(window.start(command == SW_HIDE ? "/s" : "", SW_SHOWNORMAL));
        EXPECT_THAT(events, ElementsAre("icon added", "shown by " + std::to_string(command), "files accepted",
                                        "timer set"));
    }
}

TEST_F(MainWindow, WithoutATimerThereIsNoStartAndNoIcon) {
    timersFail = true;
    scheduler::MainWindow window;
    EXPECT_FALSE(window.start("/s", SW_SHOW));
    EXPECT_EQ(icons, 0);
}

TEST_F(MainWindow, IsAnOrdinaryWindowThatIsCreatedVisible) {
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("", SW_SHOWNOACTIVATE));
    EXPECT_EQ(mainStyle, 0x12CF0000U);
    EXPECT_TRUE(IsWindowVisible(window.handle()));
}

TEST_F(MainWindow, IsShownWithTheSchedulesRows) {
    scheduler::ScheduleList schedule;
    schedule.append({});
    schedule.append({});
    ASSERT_TRUE(scheduler::saveSchedule(schedule));
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("", SW_SHOWNOACTIVATE));
    EXPECT_EQ(rowsWhenShown, 2) << "they are not painted behind an empty list";
}

TEST_F(MainWindow, TheHelpCommandAsksForTheProgramsHelp) {
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    helps = 0;
    SendMessageA(window.handle(), WM_COMMAND, IDM_HELP, 0);
    EXPECT_EQ(helps, 1);
}

TEST_F(MainWindow, ItsIconComesBackWithTheTaskbar) {
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    SendMessageA(window.handle(), RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_EQ(icons, 2) << "added once more";
}

TEST_F(MainWindow, WithoutAMessageOfTheTaskbarNoOtherMessageIsTakenForIt) {
    messagesAreRefused = true;
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    SendMessageA(window.handle(), WM_NULL, 0, 0);
    EXPECT_EQ(icons, 1);
}

TEST_F(MainWindow, ATickThatEndsByAnExceptionIsOver) {
    scheduler::ScheduledProject due;
    due.path = "C:\\Sites\\news.kra";
    due.kind = scheduler::ScheduleKind::AtStartup;
    scheduler::ScheduleList schedule;
    schedule.append(due);
    ASSERT_TRUE(scheduler::saveSchedule(schedule));
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    SendMessageA(window.handle(), WM_COMMAND, IDM_DISPLAY, 0);
    unforeseen = true;
    SendMessageA(window.handle(), WM_TIMER, 1, 0); // the run that cannot be started is over and to be saved
    ASSERT_FALSE(unforeseen) << "nothing was thrown";

    auto* const list = framework::Window::of(GetDlgItem(window.handle(), IDC_SCHEDULE_LIST));
    ASSERT_NE(list, nullptr);
    const test::Paintings paintings(*list);
    SendMessageA(window.handle(), WM_COMMAND, IDM_SUSPEND, 0);
    EXPECT_EQ(paintings.count, 1) << "a change outside of a tick is shown at once";
}

TEST_F(MainWindow, AnUnfinishedTickGoesOnByATimerOfItsOwn) {
    scheduler::ScheduledProject due;
    due.path = "run:work";
    due.kind = scheduler::ScheduleKind::AtStartup;
    scheduler::ScheduleList schedule;
    schedule.append(due);
    schedule.append(due);
    ASSERT_TRUE(scheduler::saveSchedule(schedule));
    scheduler::Preferences preferences;
    preferences.runMultiple = true;
    scheduler::storePreferences(preferences);
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    threadStartMilliseconds = 40; // longer than a tick may take
    timers.clear();
    SendMessageA(window.handle(), WM_TIMER, 1, 0);
    EXPECT_THAT(timers, ElementsAre(Pair(2U, UINT{USER_TIMER_MINIMUM})));
    EXPECT_THAT(killedTimers, IsEmpty());
    SendMessageA(window.handle(), WM_TIMER, 2, 0);
    EXPECT_THAT(killedTimers, ElementsAre(2U));
}

TEST_F(MainWindow, TheListTakesOnTheUsersNewColours) {
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    const HWND list = GetDlgItem(window.handle(), IDC_SCHEDULE_LIST);
    const COLORREF darkBlue = RGB(0, 0, 64);
    const COLORREF yellow = RGB(255, 255, 0);
    const test::SystemColours colours{{COLOR_WINDOW, darkBlue}, {COLOR_WINDOWTEXT, yellow}};
    SendMessageA(window.handle(), WM_SYSCOLORCHANGE, 0, 0); // a system may tell it later
    EXPECT_EQ(ListView_GetBkColor(list), darkBlue);
    EXPECT_EQ(ListView_GetTextBkColor(list), darkBlue);
    EXPECT_EQ(ListView_GetTextColor(list), yellow);
}

TEST_F(MainWindow, AStartAtLogOnLeavesTheKeyboardWhereItIs) {
    const HWND other = CreateWindowExA(0, "STATIC", "another window", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                       GetDesktopWindow(), nullptr, nullptr, nullptr);
    SetFocus(other);
    ASSERT_EQ(GetFocus(), other);
    scheduler::MainWindow window;
    ASSERT_TRUE(window.start("/s", SW_SHOW));
    EXPECT_EQ(GetActiveWindow(), other);
    EXPECT_EQ(GetFocus(), other);
    DestroyWindow(other);
}

} // namespace
