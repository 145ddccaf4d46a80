#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/programexit.h"
#include "tests/scheduler/ui/framework/probewindow.h"
#include "tests/scheduler/ui/listwindow.h"
#include "tests/scheduler/ui/platformcalls.h"
#include "tests/support/eventlog.h"
#include "tests/support/fakehistorystore.h"
#include "tests/support/fakeschedulestore.h"

#include <gmock/gmock.h>

#include <new>

namespace {

using scheduler::ExitMode;
using test::Override;
using testing::ElementsAre;

const std::string runValue = "Software\\Microsoft\\Windows\\CurrentVersion\\Run\\Exit Test";

class ProgramExit : public testing::Test, protected test::FakeScheduleStore {
protected:
    ProgramExit() {
        base::applicationName = "Exit Test";
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
        ListView_SetColumnWidth(window_.list.handle(), 2, 123);
        icon_.add(window_.handle());
    }
    ~ProgramExit() override { base::deleteValue(HKEY_LOCAL_MACHINE, runValue); }

    void addPendingEntry() { window_.add("news"); }
    bool isShown() const { return IsWindowVisible(window_.handle()) != FALSE; }
    static std::string autostart() { return base::getString(HKEY_LOCAL_MACHINE, runValue); }

    static std::uint32_t savedWidth() {
        std::uint32_t width = 0;
        scheduler::appRegistryKey(scheduler::stateSection).readNumber("Column2", width);
        return width;
    }

    void save(const scheduler::ScheduleList& list) override {
        EXPECT_TRUE(!events_.empty() || historyStore_.lines.empty()) << "noted before the save";
        events_.push_back("schedule saved after columns of " + std::to_string(savedWidth()) +
                          (autostart().empty() ? "" : " and autostart"));
        FakeScheduleStore::save(list);
    }

    test::EventLog events_;
    test::MessageBoxes boxes_;
    test::ListWindow window_;
    scheduler::Preferences preferences_;
    scheduler::NotificationIcon icon_;
    scheduler::WindowPresence presence_{window_, preferences_};
    test::FakeHistoryStore historyStore_;
    scheduler::RunHistory history_{window_.schedule, window_.clock, historyStore_};
    scheduler::ProgramExit exit_{
        {window_.schedule, *this, preferences_, window_.list, icon_, presence_, history_}};

private:
    Override<test::Shell_NotifyIconACall> shell_{[this](DWORD message, NOTIFYICONDATAA*) {
        if (message == NIM_DELETE)
            events_.emplace_back(isShown() ? "icon of a shown window removed" : "icon removed");
        return TRUE;
    }};
    Override<test::PostQuitMessageCall> quitting_{[this](int code) {
        events_.push_back("quit " + std::to_string(code) + (autostart().empty() ? "" : " with autostart"));
    }};
};

TEST_F(ProgramExit, TakesItsStepsInOrderWithoutAskingWhenNothingIsPending) {
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events_,
                ElementsAre("icon removed", "schedule saved after columns of 123", "quit 0 with autostart"));
    EXPECT_TRUE(boxes_.shown.empty());
    EXPECT_NE(preferences_.windowState, base::WindowState{}) << "the placement of the window";
    EXPECT_EQ(autostart(), "\"" + base::executablePath() + "\" /s");
    preferences_.autostart = false;
    for (int time = 0; time < 2; ++time) { // the second time, the value is missing
        exit_.exitProgram(ExitMode::AskFirst);
        EXPECT_EQ(events_.back(), "quit 0");
    }
}

TEST_F(ProgramExit, ADeniedAccessToTheRunKeyIsIgnored) {
    const auto isRunKey = [](LPCSTR name) { return std::string(name).ends_with("\\CurrentVersion\\Run"); };
    int refusals = 0;
    const Override<test::RegCreateKeyExACall> writing([&](HKEY root, LPCSTR name, auto... rest) -> LSTATUS {
        return isRunKey(name) && ++refusals ? ERROR_ACCESS_DENIED
                                            : test::RegCreateKeyExACall::original(root, name, rest...);
    });
    const Override<test::RegOpenKeyExACall> deleting([&](HKEY root, LPCSTR name, auto... rest) -> LSTATUS {
        return isRunKey(name) && ++refusals ? ERROR_ACCESS_DENIED
                                            : test::RegOpenKeyExACall::original(root, name, rest...);
    });
    for (const bool wanted : {true, false}) {
        preferences_.autostart = wanted;
        refusals = 0;
        exit_.exitProgram(ExitMode::AskFirst);
        EXPECT_GT(refusals, 0);
        EXPECT_EQ(events_.back(), "quit 0");
    }
}

TEST_F(ProgramExit, AsksOverTheActiveWindowWhenAnEntryIsPending) {
    addPendingEntry();
    const HWND other = test::createPlain("STATIC", WS_POPUP | WS_VISIBLE, {0, 0, 50, 50}, window_.handle());
    for (const HWND active : {window_.handle(), other}) {
        SetActiveWindow(active);
        boxes_.shown.clear();
        boxes_.answer = [](const auto&) { return IDNO; };
        exit_.exitProgram(ExitMode::AskFirst);
        EXPECT_TRUE(events_.empty()) << "No changes nothing";
        EXPECT_TRUE(isShown());
        ASSERT_EQ(boxes_.shown.size(), 1U);
        EXPECT_EQ(boxes_.shown[0].owner, active);
        EXPECT_EQ(boxes_.shown[0].text,
                  "The Scheduler will not be able to launch projects if you exit.  You can choose \"Close\" "
                  "to hide the main window and still leave the program active.  Are you sure you want to "
                  "exit?");
        EXPECT_EQ(boxes_.shown[0].caption, "Exit Test");
        EXPECT_EQ(boxes_.shown[0].flags, 36U);
    }
    DestroyWindow(other);
    boxes_.answer = [](const auto&) { return IDYES; };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_EQ(events_.back(), "quit 0 with autostart");
}

TEST_F(ProgramExit, ExitsWithoutAskingIfToldTo) {
    addPendingEntry();
    exit_.exitProgram(ExitMode::WithoutAsking);
    EXPECT_TRUE(boxes_.shown.empty());
    EXPECT_EQ(events_.back(), "quit 0 with autostart");
}

TEST_F(ProgramExit, AfterAFailedQuestionTheNextRequestAsks) {
    addPendingEntry();
    boxes_.answer = [](const auto&) -> int { throw std::bad_alloc(); };
    EXPECT_THROW(exit_.exitProgram(ExitMode::AskFirst), std::bad_alloc);
    boxes_.answer = [](const auto&) { return IDYES; };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_EQ(events_.back(), "quit 0 with autostart");
}

TEST_F(ProgramExit, ASessionEndSavesAndIsRecordedBeforeItAsks) {
    addPendingEntry();
    boxes_.answer = [&](const auto&) {
        EXPECT_THAT(events_, ElementsAre("schedule saved after columns of 123"));
        EXPECT_EQ(historyStore_.lines.size(), 1U);
        return IDNO;
    };
    exit_.onSessionEnd();
    EXPECT_EQ(boxes_.shown.size(), 1U);
    EXPECT_TRUE(isShown());
    boxes_.answer = [](const auto&) { return IDYES; };
    exit_.onSessionEnd();
    EXPECT_EQ(events_.back(), "quit 0 with autostart");
}

TEST_F(ProgramExit, ASessionEndDuringTheQuestionSavesWithoutASecondQuestion) {
    addPendingEntry();
    boxes_.answer = [&](const auto&) {
        addPendingEntry();
        exit_.onSessionEnd();
        return IDNO;
    };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_EQ(boxes_.shown.size(), 1U);
    ASSERT_EQ(saved.size(), 1U);
    EXPECT_EQ(saved[0].size(), 2U);
    EXPECT_TRUE(isShown());
}

} // namespace
