#include "lib/base/handles.h"
#include "tests/scheduler/ui/mainwindowtest.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;

std::string numberOf(HICON icon) {
    ICONINFOEXA info{};
    info.cbSize = sizeof(info);
    EXPECT_TRUE(GetIconInfoExA(icon, &info));
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    return std::to_string(info.wResID);
}

class NotificationIcon : public test::MainWindowTest {
protected:
    bool shellAnswers = true;
    std::vector<std::string> calls; ///< calls to the shell since the last newCalls()

    std::vector<std::string> newCalls() { return std::exchange(calls, {}); }

    /// The schedule cannot be saved while the returned handle is open.
    static base::FileHandle heldSchedule() {
        return base::FileHandle(CreateFileA(scheduler::schedulePath().c_str(), GENERIC_READ, FILE_SHARE_READ,
                                            nullptr, OPEN_EXISTING, 0, nullptr));
    }

private:
    test::Override<test::Shell_NotifyIconACall> shell_{[this](DWORD message, NOTIFYICONDATAA* record) {
        std::string call = message == NIM_ADD ? "add" : message == NIM_DELETE ? "delete" : "modify";
        if (record->uFlags & NIF_ICON)
            call += " " + numberOf(record->hIcon);
        if (record->uFlags & NIF_TIP)
            call += std::string(" '") + record->szTip + "'";
        if (record->uFlags & NIF_INFO)
            call = record->szInfoTitle + std::string(": ") + record->szInfo;
        calls.push_back(call);
        EXPECT_TRUE(IsWindow(record->hWnd));
        return shellAnswers;
    }};
};

constexpr const char* addActive = "add 100 'Corvane Scheduler'";
constexpr const char* showActive = "modify 100 'Corvane Scheduler'";
constexpr const char* showSuspended = "modify 130 'Corvane Scheduler (suspended)'";

TEST_F(NotificationIcon, ChangesOnSuspendAndResume) {
    for (const bool answers : {true, false}) {
        shellAnswers = answers;
        start();
        EXPECT_THAT(newCalls(), ElementsAre(addActive));
        command(IDM_SUSPEND);
        EXPECT_THAT(newCalls(), ElementsAre(showSuspended));
        command(IDM_SUSPEND);
        EXPECT_THAT(newCalls(), ElementsAre(showActive));
        command(IDM_CLOSE);
        EXPECT_THAT(newCalls(), IsEmpty());
        mainWindow.reset();
        EXPECT_THAT(newCalls(), ElementsAre("delete"));
    }
}

TEST_F(NotificationIcon, ShowsThatTheProgramStartedSuspended) {
    scheduler::Preferences preferences;
    preferences.suspended = true;
    scheduler::storePreferences(preferences);
    start();
    EXPECT_THAT(calls, ElementsAre(addActive, showSuspended));
}

TEST_F(NotificationIcon, IsRestoredInItsStateWhenTheTaskbarRestarts) {
    start();
    const UINT taskbarCreated = RegisterWindowMessageA("TaskbarCreated");
    for (const char* const shown : {showActive, showSuspended}) {
        newCalls();
        send(taskbarCreated);
        EXPECT_THAT(newCalls(), ElementsAre(addActive, shown));
        command(IDM_SUSPEND);
    }
}

TEST_F(NotificationIcon, IgnoresMessageZeroIfTaskbarCreatedCannotBeRegistered) {
    const test::Override<test::RegisterWindowMessageACall> none([](LPCSTR) { return 0U; });
    start();
    newCalls();
    send(WM_NULL);
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(NotificationIcon, WarnsOnlyOfTheFirstOfConsecutiveFailedSaves) {
    save({entry("run:work")});
    for (const bool answers : {true, false}) {
        shellAnswers = answers;
        start();
        select(0);
        for (int series = 0; series < 2; ++series) {
            base::FileHandle held = heldSchedule();
            ASSERT_TRUE(held);
            newCalls();
            command(IDM_ENABLE);
            EXPECT_THAT(newCalls(),
                        ElementsAre(MatchesRegex(
                            "Corvane Scheduler: The schedule could not be saved\\. Changes will be "
                            "lost when the Scheduler exits\\.\n.:.*\\\\schedule\\.dat: .+")));
            command(IDM_ENABLE);
            send(RegisterWindowMessageA("TaskbarCreated"));
            EXPECT_THAT(newCalls(), ElementsAre(addActive, showActive)) << "no second warning";
            held.reset();
            command(IDM_ENABLE);
            EXPECT_THAT(newCalls(), IsEmpty());
        }
        EXPECT_TRUE(boxes.shown.empty());
    }
}

TEST_F(NotificationIcon, ShowsNoWarningAfterItsRemoval) {
    const test::Override<test::PostQuitMessageCall> quit([](int) {});
    start();
    save({entry("run:work")});
    const base::FileHandle held = heldSchedule();
    ASSERT_TRUE(held);
    command(IDM_EXIT);
    EXPECT_THAT(calls, ElementsAre(addActive, "delete"));
}

TEST_F(NotificationIcon, IsRemovedOnlyOnce) {
    const test::Override<test::PostQuitMessageCall> quit([](int) {});
    start();
    command(IDM_EXIT);
    newCalls();
    mainWindow.reset();
    EXPECT_THAT(calls, IsEmpty());
}

} // namespace
