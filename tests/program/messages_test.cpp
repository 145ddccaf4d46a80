// What other processes may post to the main window, and requests that come at bad moments.

#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/worker.h"
#include "tests/program/listdriver.h"
#include "tests/program/programtest.h"

#include <array>
#include <set>

using driver::SchedulerProcess;
using driver::waitUntil;
using scheduler::ScheduledProject;

namespace {

constexpr std::array<DWORD, 9> oddParameters = {0,       1,          2,          0x203,     0x7FFF,
                                                0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

/// Below WM_USER, those that do what they say, whoever posts them: they end, hide, lock, move or operate the
/// window, call a procedure, start the help program, or are unpacked by the platform (conversations between
/// programs). The last is the system's own timer.
const std::set<UINT> effective = {WM_SETREDRAW, WM_CLOSE,      WM_QUIT,  WM_ENDSESSION, WM_HELP,
                                  WM_COMMAND,   WM_SYSCOMMAND, WM_TIMER, 0x118};

bool isEffective(UINT message) {
    const bool isKey = message >= WM_KEYFIRST && message <= WM_KEYLAST;
    const bool isButton = message >= WM_NCLBUTTONDOWN && message <= WM_NCXBUTTONDBLCLK;
    const bool isConversation = message >= 0x3E0 && message <= 0x3E8;
    return isKey || isButton || isConversation || effective.contains(message);
}

const std::set<UINT> commands = {IDM_PREFERENCES, IDM_ADD,    IDM_EDIT,  IDM_DELETE, IDM_RUN,
                                 IDM_SUSPEND,     IDM_TEST,   IDM_ABOUT, IDM_EXIT,   IDM_HELP,
                                 IDM_DISPLAY,     IDM_ENABLE, IDM_OPEN,  IDM_CLOSE};

class ForeignMessages : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        pending_.nextRun = pending_.time;
        startWith({pending_});
    }

    void startWith(const std::vector<ScheduledProject>& entries) {
        scheduler_.kill();
        driver::saveEntries(entries);
        ASSERT_TRUE(scheduler_.start());
    }

    HWND window() const { return scheduler_.window(); }

    void post(UINT message, WPARAM wParam, LPARAM lParam) {
        PostMessageA(window(), message, wParam, lParam);
        // The platform's queues hold ten thousand messages.
        if (++posted_ % 5000 == 0) {
            ASSERT_TRUE(handlesAll());
        }
    }

    void postWithOddParameters(UINT message) {
        const std::size_t count = oddParameters.size();
        const DWORD first = oddParameters[message % count];
        const DWORD second = oddParameters[message / count % count];
        post(message, first, static_cast<LPARAM>(second));
        post(message, second, static_cast<LPARAM>(first));
    }

    /// Whether the window handles what was posted so far. What is posted is handled in its order, so what is
    /// posted last shows it.
    bool handlesAll() const {
        scheduler_.command(IDM_CLOSE);
        waitUntil([&] { return !IsWindowVisible(window()); });
        scheduler_.command(IDM_DISPLAY);
        return waitUntil([&] { return IsWindowVisible(window()) || !scheduler_.isRunning(); }) &&
               scheduler_.isRunning();
    }

    /// The entry as it is saved; an empty one in the middle of a save.
    static ScheduledProject saved() {
        const std::vector<ScheduledProject> entries = driver::savedSchedule();
        return entries.empty() ? ScheduledProject() : entries.front();
    }

    /// The window is as it was, and saves the schedule it had when it is told to exit.
    void expectUnharmed() {
        ASSERT_TRUE(handlesAll());
        EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
        EXPECT_TRUE(IsWindowEnabled(window()));
        EXPECT_EQ(driver::ListDriver(window()).rowCount(), 1);
        EXPECT_TRUE(scheduler_.dialogs().empty());
        EXPECT_TRUE(scheduler_.exit());
        ASSERT_EQ(driver::savedSchedule().size(), 1U);
        EXPECT_TRUE(saved() == pending_);
    }

    /// As the system does it when the user logs off.
    void logOff() const {
        DWORD_PTR mayEnd = 0;
        EXPECT_NE(
            SendMessageTimeoutA(window(), WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, test::patience, &mayEnd), 0);
        EXPECT_EQ(mayEnd, 1U);
        SendNotifyMessageA(window(), WM_ENDSESSION, TRUE, 0);
    }

    bool dialogsAre(std::size_t count) const {
        return waitUntil([&] { return scheduler_.dialogs().size() == count; });
    }

    ScheduledProject pending_ = driver::pendingEntry();
    unsigned posted_ = 0;
};

TEST_F(ForeignMessages, OfAProgramsOwnNumbersDoNoHarm) {
    for (UINT message = WM_USER; message <= WM_APP + 200 && !HasFatalFailure(); ++message)
        postWithOddParameters(message);
    expectUnharmed();
}

TEST_F(ForeignMessages, OfThePlatformsNumbersDoNoHarm) {
    for (UINT message = 0; message < WM_USER && !HasFatalFailure(); ++message)
        if (!isEffective(message))
            postWithOddParameters(message);
    expectUnharmed();
}

TEST_F(ForeignMessages, CommandsThatNobodyHasAreIgnored) {
    for (UINT id = 0; id <= 0xFFFF && !HasFatalFailure(); ++id)
        if (!commands.contains(id))
            post(WM_COMMAND, MAKEWPARAM(id, id % 3),
                 static_cast<LPARAM>(oddParameters[id % oddParameters.size()]));
    expectUnharmed();
}

TEST_F(ForeignMessages, TimersThatNobodyHasAreTicks) {
    for (const DWORD id : oddParameters)
        for (int times = 0; times < 100; ++times)
            post(WM_TIMER, id, 0);
    expectUnharmed();
}

TEST_F(ForeignMessages, EndsOfRunsThatAreNotOnesOwnEndNoRun) {
    const driver::SampleSpider spider;
    ScheduledProject entry = pending_;
    entry.path = spider.makeProject("news.kra", "ms=2500\nresult=fine\n");
    startWith({entry});
    const driver::ListDriver list(window());
    list.select({0});
    scheduler_.command(IDM_RUN);
    ASSERT_TRUE(waitUntil([&] { return spider.logged("start run 1") == 1; }));
    for (const WPARAM number : {0u, 2u, 0x10001u, 0x80000001u, 0xFFFFFFFFu})
        post(scheduler::WM_RUN_FINISHED, number, 1);
    post(WM_NULL, 0, 0);
    ASSERT_TRUE(handlesAll());
    EXPECT_EQ(spider.logged("end run"), 0U) << "too slow a machine";
    EXPECT_EQ(list.cell(0, driver::nextRunColumn), "Running");

    ASSERT_TRUE(waitUntil([&] { return saved().lastResult == "fine"; }));
    const ScheduledProject ended = saved();
    post(scheduler::WM_RUN_FINISHED, 1, 0); // a second time
    ASSERT_TRUE(handlesAll());
    EXPECT_TRUE(saved() == ended);
}

TEST_F(ForeignMessages, AllRequestsToLeaveAreOneQuestion) {
    scheduler_.command(IDM_EXIT);
    ASSERT_TRUE(dialogsAre(1));
    for (int times = 0; times < 3; ++times) {
        EXPECT_EQ(SchedulerProcess::runToEnd("/close"), 0U);
        scheduler_.command(IDM_EXIT);
        logOff();
    }
    ASSERT_TRUE(handlesAll());
    ASSERT_EQ(scheduler_.dialogs().size(), 1U);
    SchedulerProcess::press(scheduler_.dialogs()[0], IDYES);
    ASSERT_TRUE(scheduler_.waitForExit());
    EXPECT_EQ(scheduler_.exitCode(), 0U);
    EXPECT_TRUE(saved() == pending_);
}

TEST_F(ForeignMessages, WhatIsOnlySentDoesNoHarmWhileAMessageBoxOrMenuStands) {
    // Both are opened by messages that were sent, which pass by the program's own loop.
    SendNotifyMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN);
    ASSERT_TRUE(waitUntil([&] { return scheduler_.isMenuOpen(); }));
    for (const UINT message : {UINT{WM_NOTIFY}, UINT{WM_NCDESTROY}})
        postWithOddParameters(message);
    PostMessageA(window(), WM_CANCELMODE, 0, 0);
    ASSERT_TRUE(waitUntil([&] { return !scheduler_.isMenuOpen(); }));

    logOff();
    ASSERT_TRUE(dialogsAre(1));
    for (const UINT message : {UINT{WM_NOTIFY}, UINT{WM_NCDESTROY}})
        postWithOddParameters(message);
    ASSERT_TRUE(handlesAll());
    SchedulerProcess::press(scheduler_.dialogs()[0], IDNO);
    ASSERT_TRUE(dialogsAre(0));
    EXPECT_TRUE(scheduler_.isRunning());
    EXPECT_EQ(driver::ListDriver(window()).rowCount(), 1);
}

TEST_F(ForeignMessages, LogOffWhileADialogIsOpenAsksOverIt) {
    for (const int dialog : {IDM_ABOUT, IDM_PREFERENCES, IDM_ADD}) {
        SCOPED_TRACE(dialog);
        startWith({pending_});
        scheduler_.command(dialog);
        ASSERT_TRUE(dialogsAre(1));
        const HWND below = scheduler_.dialogs()[0];
        for (const int answer : {IDNO, IDYES}) {
            logOff();
            ASSERT_TRUE(dialogsAre(2));
            HWND question = scheduler_.dialogs()[0];
            if (question == below)
                question = scheduler_.dialogs()[1];
            SchedulerProcess::press(question, answer);
            ASSERT_TRUE(answer == IDYES ? scheduler_.waitForExit() : dialogsAre(1));
        }
        EXPECT_EQ(scheduler_.exitCode(), 0U);
        EXPECT_TRUE(saved() == pending_);
    }
}

TEST_F(ForeignMessages, LogOffWhileADialogOrAMenuIsOpenEndsTheProgram) {
    pending_.disabled = 1; // nothing to ask about
    for (const int command : {IDM_ABOUT, IDM_PREFERENCES, IDM_ADD, 0}) {
        SCOPED_TRACE(command);
        startWith({pending_});
        if (command != 0) {
            scheduler_.command(command);
            ASSERT_TRUE(dialogsAre(1));
        } else {
            PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN);
            ASSERT_TRUE(waitUntil([&] { return scheduler_.isMenuOpen(); }));
        }
        logOff();
        ASSERT_TRUE(scheduler_.waitForExit());
        EXPECT_EQ(scheduler_.exitCode(), 0U);
        EXPECT_TRUE(saved() == pending_);
    }
}

} // namespace
