#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "tests/program/programtest.h"

#include <array>
#include <set>

using driver::SchedulerProcess;
using driver::waitUntil;
using scheduler::ScheduledProject;

namespace {

constexpr std::array<DWORD, 9> oddParameters = {0,       1,          2,          0x203,     0x7FFF,
                                                0x10000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

/// Messages that have an effect when posted; isEffective() adds ranges of others. 0x118 is WM_SYSTIMER.
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

    void post(UINT message, WPARAM wParam, LPARAM lParam) {
        PostMessageA(window(), message, wParam, lParam);
        // A message queue holds ten thousand messages.
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

    /// Waits until all posted messages are handled; false if the program does not survive them.
    bool handlesAll() const {
        scheduler_.command(IDM_CLOSE);
        waitUntil([&] { return !IsWindowVisible(window()); });
        scheduler_.command(IDM_DISPLAY);
        return waitUntil([&] { return IsWindowVisible(window()) || !scheduler_.isRunning(); }) &&
               scheduler_.isRunning();
    }

    void expectUnharmed() {
        ASSERT_TRUE(handlesAll());
        EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
        EXPECT_TRUE(IsWindowEnabled(window()));
        EXPECT_EQ(list().rowCount(), 1);
        EXPECT_TRUE(scheduler_.dialogs().empty());
        EXPECT_TRUE(scheduler_.exit());
        EXPECT_TRUE(savedEntry() == pending_);
    }

    void logOff() const {
        DWORD_PTR mayEnd = 0;
        EXPECT_NE(
            SendMessageTimeoutA(window(), WM_QUERYENDSESSION, 0, 0, SMTO_NORMAL, test::timeout, &mayEnd), 0);
        EXPECT_EQ(mayEnd, 1U);
        SendNotifyMessageA(window(), WM_ENDSESSION, TRUE, 0);
    }

    bool dialogsAre(std::size_t count) const {
        return waitUntil([&] { return scheduler_.dialogs().size() == count; });
    }

    ScheduledProject pending_ = driver::pendingEntry();
    unsigned posted_ = 0;
};

std::vector<UINT> numbersFrom(UINT first, UINT dense, UINT last) {
    constexpr UINT step = 31;
    std::vector<UINT> numbers;
    for (UINT number = first; number <= last; number += number < dense ? 1 : step)
        numbers.push_back(number);
    return numbers;
}

TEST_F(ForeignMessages, NoPostedMessageDoesHarm) {
    for (UINT message = 0; message < WM_USER; ++message)
        if (!isEffective(message))
            postWithOddParameters(message);
    for (const UINT message : numbersFrom(WM_USER, WM_USER + 500, WM_APP - 1))
        postWithOddParameters(message);
    for (const UINT message : numbersFrom(WM_APP, WM_APP + 200, 0xFFFF))
        postWithOddParameters(message);
    expectUnharmed();
}

TEST_F(ForeignMessages, UnknownCommandsAreIgnored) {
    for (const UINT id : numbersFrom(0, 2000, 0xFFFF))
        if (!commands.contains(id))
            post(WM_COMMAND, MAKEWPARAM(id, id % 3),
                 static_cast<LPARAM>(oddParameters[id % oddParameters.size()]));
    expectUnharmed();
}

TEST_F(ForeignMessages, SeveralRequestsToExitAskOneQuestion) {
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
    EXPECT_TRUE(savedEntry() == pending_);
}

TEST_F(ForeignMessages, LogOffWhileADialogIsOpenAsksOverIt) {
    for (const int dialog : {IDM_ABOUT, IDM_ADD}) {
        SCOPED_TRACE(dialog);
        startWith({pending_});
        scheduler_.command(dialog);
        ASSERT_TRUE(dialogsAre(1));
        const HWND below = scheduler_.dialogs()[0];
        for (const int answer : {IDNO, IDYES}) {
            logOff();
            ASSERT_TRUE(dialogsAre(2));
            const auto dialogs = scheduler_.dialogs();
            SchedulerProcess::press(dialogs[dialogs[0] == below ? 1 : 0], answer);
            ASSERT_TRUE(answer == IDYES ? scheduler_.waitForExit() : dialogsAre(1));
        }
        EXPECT_EQ(scheduler_.exitCode(), 0U);
        EXPECT_TRUE(savedEntry() == pending_);
    }
}

TEST_F(ForeignMessages, LogOffWhileADialogOrAMenuIsOpenEndsTheProgram) {
    pending_.disabled = 1; // so that log-off asks nothing
    for (const bool menu : {false, true}) {
        SCOPED_TRACE(menu ? "menu" : "dialog");
        startWith({pending_});
        if (menu)
            PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN);
        else
            scheduler_.command(IDM_ADD);
        ASSERT_TRUE(menu ? waitUntil([&] { return scheduler_.isMenuOpen(); }) : dialogsAre(1));
        logOff();
        ASSERT_TRUE(scheduler_.waitForExit());
        EXPECT_EQ(scheduler_.exitCode(), 0U);
        EXPECT_TRUE(savedEntry() == pending_);
    }
}

} // namespace
