#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/mainwindowtest.h"
#include "tests/scheduler/ui/paintcounter.h"
#include "tests/support/eventlog.h"
#include "tests/support/systemcolours.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <utility>

namespace {

using base::TimeSpan;
using base::TimeValue;
using scheduler::ScheduleColumn;
using scheduler::ScheduledProject;
using test::Override;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class MainWindow : public test::MainWindowTest {
protected:
    std::vector<std::pair<UINT_PTR, UINT>> timers; ///< window timers started: id and milliseconds
    std::vector<UINT_PTR> killedTimers;

private:
    Override<test::SetTimerCall> timers_{[this](HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC act) {
        if (window)
            timers.emplace_back(id, milliseconds);
        return test::SetTimerCall::original(window, id, milliseconds, act);
    }};
    Override<test::KillTimerCall> killed_{[this](HWND window, UINT_PTR id) {
        const BOOL killed = test::KillTimerCall::original(window, id);
        if (killed)
            killedTimers.push_back(id);
        return killed;
    }};
};

TEST_F(MainWindow, IsCreatedVisibleAtTheDefaultPlaceAndSize) {
    int made = 0;
    const Override<test::CreateWindowExACall> creation([&](DWORD extendedStyle, LPCSTR name, LPCSTR title,
                                                           DWORD style, int x, int y, int width, int height,
                                                           auto... rest) {
        if (name == std::string("scheduler")) {
            ++made;
            EXPECT_STREQ(title, "Corvane Scheduler");
            EXPECT_EQ(style, 0x12CF0000U);
            for (const int place : {x, y, width, height})
                EXPECT_EQ(place, CW_USEDEFAULT);
        }
        return test::CreateWindowExACall::original(extendedStyle, name, title, style, x, y, width, height,
                                                   rest...);
    });
    start("", SW_SHOWNOACTIVATE);
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(IsWindowVisible(handle()));
}

TEST_F(MainWindow, RunsTheStepsOfItsStartInOrder) {
    test::EventLog events;
    const auto record = [&](const std::string& event) {
        if (events.empty() || events.back() != event)
            events.push_back(event);
    };
    const Override<test::SHDeleteKeyACall> deletion([&](HKEY root, LPCSTR key) {
        if (root == HKEY_LOCAL_MACHINE && key == std::string("SOFTWARE\\Brindlewood\\Corvane Scheduler"))
            record("outcomes deleted");
        return test::SHDeleteKeyACall::original(root, key);
    });
    const Override<test::RegQueryValueExACall> reading([&](HKEY key, LPCSTR name, auto... rest) {
        if (name == std::string("WaitTime"))
            record("preferences loaded");
        if (name == std::string("Column0"))
            record("columns restored");
        return test::RegQueryValueExACall::original(key, name, rest...);
    });
    const Override<test::CreateFileACall> opening([&](LPCSTR name, DWORD access, DWORD share, auto... rest) {
        if (name == scheduler::schedulePath())
            record("schedule loaded");
        return test::CreateFileACall::original(name, access, share, rest...);
    });
    const Override<test::Shell_NotifyIconACall> icon([&](DWORD message, NOTIFYICONDATAA*) {
        if (message == NIM_ADD)
            record("icon added");
        return TRUE;
    });
    const Override<test::ShowWindowCall> showing([&](HWND shown, int command) {
        if (!(GetWindowLongA(shown, GWL_STYLE) & WS_CHILD))
            record("shown by " + std::to_string(command) + " with " +
                   std::to_string(ListView_GetItemCount(list())) + " rows");
        return test::ShowWindowCall::original(shown, command);
    });
    const Override<test::DragAcceptFilesCall> accepting([&](HWND, BOOL accepts) {
        if (accepts)
            record("files accepted");
    });
    scheduler::storePreferences({}); // values are read only if the key exists
    save({entry("C:\\Sites\\news.kra"), entry("C:\\Sites\\shop.kra")});
    for (const auto& [line, shown] :
         {std::pair{"", "shown by 1 with 2 rows"}, {"/s", "shown by 0 with 2 rows"}}) {
        events.clear();
        timers.clear();
        start(line);
        EXPECT_THAT(events, ElementsAre("outcomes deleted", "preferences loaded", "schedule loaded",
                                        "columns restored", "icon added", shown, "files accepted"));
        EXPECT_THAT(timers, Contains(Pair(1U, 1000U)));
    }
}

TEST_F(MainWindow, WinMainInitialisesCom) {
    int initialisations = 0;
    const Override<test::CoInitializeCall> library([&](LPVOID reserved) {
        EXPECT_EQ(reserved, nullptr);
        ++initialisations;
        return E_FAIL; // so that CoUninitialize is not called
    });
    const Override<test::FindWindowACall> noOtherInstance([](LPCSTR, LPCSTR) { return nullptr; });
    std::string commandLine = "/close";
    EXPECT_EQ(WinMain(nullptr, nullptr, commandLine.data(), SW_HIDE), 0);
    EXPECT_EQ(initialisations, 1);
}

TEST_F(MainWindow, AStartAtLogOnDoesNotTakeTheFocus) {
    const HWND other = test::createPlain("STATIC", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50});
    SetFocus(other);
    ASSERT_EQ(GetFocus(), other);
    start("/s", SW_SHOW);
    EXPECT_EQ(GetActiveWindow(), other);
    EXPECT_EQ(GetFocus(), other);
    DestroyWindow(other);
}

TEST_F(MainWindow, ATickRepaintsTheListOnlyWhenATextChanges) {
    TimeValue now = TimeValue::fromLocal(2026, 5, 20, 12, 0, 0, -1);
    test::currentTime = [&] { return now; };
    ScheduledProject run = entry("run:work");
    run.lastRun = now;
    save({run});
    start("", SW_SHOWNOACTIVATE);
    const test::PaintCounter paintings(list());
    tick();
    EXPECT_EQ(paintings.count, 0);
    EXPECT_TRUE(cell(0, ScheduleColumn::LastRun).starts_with("today"));
    now = now + TimeSpan::fromMinutes(13 * 60);
    tick();
    EXPECT_EQ(paintings.count, 1);
    EXPECT_TRUE(cell(0, ScheduleColumn::LastRun).starts_with("yesterday"));
}

TEST_F(MainWindow, AStartupEntryRunsOnceAfterALogOn) {
    save({entry("run:work")});
    start();
    tick();
    send(scheduler::WM_RUN_FINISHED, 1);
    EXPECT_NE(saved()[0].lastRun, TimeValue());
    EXPECT_EQ(saved()[0].nextRun, TimeValue::never());
}

TEST_F(MainWindow, ATimerMessageWithAnyIdIsATick) {
    for (const WPARAM id : {WPARAM{0}, WPARAM{1}, WPARAM{77}}) {
        save({entry("run:work")});
        start();
        tick(id);
        EXPECT_EQ(nextRun(0), "Running") << id;
    }
}

TEST_F(MainWindow, ChangesOfATickAreRepainted) {
    TimeValue now = TimeValue::fromLocal(2026, 5, 20, 12, 0, 0, -1);
    test::currentTime = [&] { return now; };
    scheduler::Preferences preferences;
    preferences.waitTime = 0;
    scheduler::storePreferences(preferences);
    save({entry("run:first"), entry("run:second")});
    start();
    command(IDM_DISPLAY);
    const test::PaintCounter paintings(list());
    tick();
    EXPECT_EQ(paintings.count, 1) << "the first was started";
    EXPECT_EQ(nextRun(0), "Running");
    now = now + TimeSpan::fromMinutes(1);
    tick();
    EXPECT_EQ(paintings.count, 2) << "the second stopped waiting";
    EXPECT_EQ(cell(1, ScheduleColumn::LastResult),
              "Could not run on schedule; another project was already running.");
}

TEST_F(MainWindow, AnEntryThatATickCannotStartIsRepaintedWithoutAMessage) {
    save({entry("run:work")});
    start();
    command(IDM_DISPLAY);
    threadsStart = false;
    const test::PaintCounter paintings(list());
    tick();
    EXPECT_EQ(paintings.count, 1);
    EXPECT_EQ(cell(0, ScheduleColumn::LastResult), "A system error prevented the project from running.");
    EXPECT_THAT(boxes.shown, IsEmpty()) << "only manual runs show a message";
}

TEST_F(MainWindow, AnExceptionEndsATick) {
    save({entry("C:\\Sites\\news.kra")});
    start();
    command(IDM_DISPLAY);
    threadsStart = false; // so that the run ends and is saved at once
    {
        const Override<test::GetWindowsDirectoryACall> unforeseen(
            [](LPSTR, UINT) -> UINT { throw std::runtime_error("unforeseen"); });
        tick();
    }
    EXPECT_EQ(saved().front().lastRun, TimeValue()) << "the save did not throw";
    const test::PaintCounter paintings(list());
    command(IDM_SUSPEND);
    EXPECT_EQ(paintings.count, 1) << "outside a tick a change is repainted at once";
}

TEST_F(MainWindow, AnUnfinishedTickContinuesByItsOwnTimer) {
    save({entry("run:first"), entry("run:second")});
    scheduler::Preferences preferences;
    preferences.runMultiple = true;
    scheduler::storePreferences(preferences);
    start();
    LONGLONG passed = 0;
    const Override<test::QueryPerformanceCounterCall> uptime([&](LARGE_INTEGER* counter) {
        const BOOL read = test::QueryPerformanceCounterCall::original(counter);
        counter->QuadPart += passed;
        return read;
    });
    test::startThread = [&passed] {
        LARGE_INTEGER frequency{};
        QueryPerformanceFrequency(&frequency);
        passed += frequency.QuadPart; // one second
        return true;
    };
    timers.clear();
    tick();
    EXPECT_THAT(timers, ElementsAre(Pair(2U, UINT{USER_TIMER_MINIMUM})));
    EXPECT_THAT(killedTimers, IsEmpty());
    EXPECT_EQ(nextRun(1), "Now");
    tick(2);
    EXPECT_EQ(nextRun(1), "Running");
    EXPECT_THAT(killedTimers, ElementsAre(2U));
}

TEST_F(MainWindow, AFailedRunNowIsReportedOverTheMainWindow) {
    save({entry("run:work")});
    start("");
    select(0);
    threadsStart = false;
    command(IDM_RUN);
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].owner, handle());
    EXPECT_EQ(boxes.shown[0].text, "A system error prevented the project from running.");
    EXPECT_EQ(boxes.shown[0].caption, "Corvane Scheduler");
    EXPECT_EQ(boxes.shown[0].flags, UINT{MB_OK});
}

TEST_F(MainWindow, AMissingSpiderIsReportedOverTheActiveWindow) {
    save({entry("C:\\Sites\\news.kra")});
    start("");
    select(0);
    const HWND other = test::createPlain("STATIC", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50}, handle());
    for (const HWND active : {handle(), other}) {
        SetActiveWindow(active);
        boxes.shown.clear();
        command(IDM_OPEN);
        ASSERT_EQ(boxes.shown.size(), 1U);
        EXPECT_EQ(boxes.shown[0].owner, active);
        EXPECT_EQ(boxes.shown[0].caption, "Corvane Scheduler");
        EXPECT_EQ(boxes.shown[0].flags, 0x10U);
    }
    DestroyWindow(other);
}

TEST_F(MainWindow, TheListFollowsChangedSystemColours) {
    start();
    const COLORREF darkBlue = RGB(0, 0, 64);
    const COLORREF yellow = RGB(255, 255, 0);
    const test::SystemColours colours{{COLOR_WINDOW, darkBlue}, {COLOR_WINDOWTEXT, yellow}};
    send(WM_SYSCOLORCHANGE); // Windows may send it later
    EXPECT_EQ(ListView_GetBkColor(list()), darkBlue);
    EXPECT_EQ(ListView_GetTextBkColor(list()), darkBlue);
    EXPECT_EQ(ListView_GetTextColor(list()), yellow);
}

} // namespace
