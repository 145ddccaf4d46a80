#include "lib/base/base.h"
#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "scheduler/ui/framework/windowclass.h"
#include "scheduler/ui/programexit.h"
#include "tests/support/eventlog.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakeschedulestore.h"
#include "tests/support/importedfunctions.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

namespace {

test::EventLog events;
std::function<int()> answer; ///< to the exit question
bool runKeyFails = false;

BOOL WINAPI notedShellCall(DWORD message, NOTIFYICONDATAA*) {
    if (message == NIM_DELETE)
        events.emplace_back("icon removed");
    return TRUE;
}

int WINAPI simulatedMessageBox(HWND, LPCSTR text, LPCSTR caption, UINT flags) {
    events.emplace_back("asked");
    EXPECT_STREQ(text, scheduler::exitQuestion);
    EXPECT_EQ(caption, base::applicationName);
    EXPECT_EQ(flags, UINT{MB_YESNO | MB_ICONQUESTION});
    return answer();
}

BOOL WINAPI notedShow(HWND window, int command) {
    static const auto original = test::platformFunction<decltype(&ShowWindow)>("user32.dll", "ShowWindow");
    if (command == SW_HIDE)
        events.emplace_back("hidden");
    return original(window, command);
}

LSTATUS WINAPI notedSetValue(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                             DWORD size) {
    static const auto original =
        test::platformFunction<decltype(&RegSetValueExA)>("advapi32.dll", "RegSetValueExA");
    if (name == std::string("Column0"))
        events.emplace_back("columns saved");
    return original(key, name, reserved, type, data, size);
}

void WINAPI notedQuit(int code) {
    events.push_back("quit " + std::to_string(code));
}

bool isRunKey(LPCSTR key) {
    return std::string(key).ends_with("\\CurrentVersion\\Run");
}

LSTATUS WINAPI limitedCreateKey(HKEY root, LPCSTR name, DWORD reserved, LPSTR keyClass, DWORD options,
                                REGSAM access, LPSECURITY_ATTRIBUTES security, PHKEY key,
                                LPDWORD disposition) {
    static const auto original =
        test::platformFunction<decltype(&RegCreateKeyExA)>("advapi32.dll", "RegCreateKeyExA");
    if (isRunKey(name)) {
        events.emplace_back("autostart written");
        if (runKeyFails)
            return ERROR_ACCESS_DENIED;
    }
    return original(root, name, reserved, keyClass, options, access, security, key, disposition);
}

LSTATUS WINAPI limitedOpenKey(HKEY root, LPCSTR name, DWORD options, REGSAM access, PHKEY key) {
    static const auto original =
        test::platformFunction<decltype(&RegOpenKeyExA)>("advapi32.dll", "RegOpenKeyExA");
    if (isRunKey(name) && access == KEY_SET_VALUE) {
        events.emplace_back("autostart deleted");
        if (runKeyFails)
            return ERROR_ACCESS_DENIED;
    }
    return original(root, name, options, access, key);
}

} // namespace

SCHEDULER_REPLACE_IMPORT(Shell_NotifyIconA, "_Shell_NotifyIconA@8", notedShellCall);
SCHEDULER_REPLACE_IMPORT(MessageBoxA, "_MessageBoxA@16", simulatedMessageBox);
SCHEDULER_REPLACE_IMPORT(PostQuitMessage, "_PostQuitMessage@4", notedQuit);
SCHEDULER_REPLACE_IMPORT(ShowWindow, "_ShowWindow@8", notedShow);
SCHEDULER_REPLACE_IMPORT(RegSetValueExA, "_RegSetValueExA@24", notedSetValue);
SCHEDULER_REPLACE_IMPORT(RegCreateKeyExA, "_RegCreateKeyExA@36", limitedCreateKey);
SCHEDULER_REPLACE_IMPORT(RegOpenKeyExA, "_RegOpenKeyExA@20", limitedOpenKey);

namespace {

using scheduler::ExitMode;
using testing::ElementsAre;

class NotingStore : public test::FakeScheduleStore {
public:
    void save(const scheduler::ScheduleList& list) override {
        events.emplace_back("schedule saved");
        FakeScheduleStore::save(list);
    }
};

class ProgramExit : public testing::Test {
protected:
    ProgramExit() {
        base::applicationName = "Exit Test";
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood");
        framework::WindowParameters parameters;
        parameters.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
        window_.create(class_, parameters);
        EXPECT_TRUE(list_.createIn(window_.handle()));
        ListView_SetColumnWidth(list_.handle(), 2, 123);
        icon_.add(window_.handle());
        answer = [] {
            ADD_FAILURE() << "nothing is to be asked";
            return IDNO;
        };
        runKeyFails = false;
        events.clear();
    }

    void addPendingEntry() {
        scheduler::ScheduledProject entry;
        entry.nextRun = clock_.now();
        schedule_.append(entry);
    }

    bool isShown() const { return IsWindowVisible(window_.handle()) != FALSE; }

    static std::uint32_t savedWidth() {
        std::uint32_t width = 0;
        base::RegistryStore store = scheduler::appRegistryKey(scheduler::stateSection);
        store.readNumber("Column2", width);
        return width;
    }

    test::FakeClock clock_{base::TimeValue(1'000'000)};
    scheduler::ScheduleList schedule_;
    scheduler::Preferences preferences_;
    NotingStore store_;
    framework::WindowClass class_;
    framework::Window window_;
    scheduler::ScheduleRows rows_{schedule_, [this] { return scheduler::EngineState{false, false}; }, clock_};
    scheduler::ScheduleListView list_{schedule_, rows_};
    scheduler::NotificationIcon icon_;
    scheduler::WindowPresence presence_{window_, preferences_};
    scheduler::ProgramExit exit_{{schedule_, store_, preferences_, list_, icon_, presence_}};
};

TEST_F(ProgramExit, TakesItsStepsInOrder) {
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("hidden", "icon removed", "columns saved", "schedule saved",
                                    "autostart written", "quit 0"));
    EXPECT_FALSE(isShown());
    EXPECT_EQ(savedWidth(), 123U);
    EXPECT_NE(preferences_.windowState, base::WindowState{}) << "where the window stood";
}

TEST_F(ProgramExit, AsksWhileSomethingIsStillToRun) {
    addPendingEntry();
    answer = [] { return IDYES; };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("asked", "hidden", "icon removed", "columns saved", "schedule saved",
                                    "autostart written", "quit 0"));
}

TEST_F(ProgramExit, AsksNothingWhenItIsToldNotTo) {
    addPendingEntry();
    exit_.exitProgram(ExitMode::WithoutAsking);
    EXPECT_EQ(events.back(), "quit 0");
}

TEST_F(ProgramExit, NoChangesNothing) {
    addPendingEntry();
    answer = [] { return IDNO; };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("asked"));
    EXPECT_TRUE(isShown());
    EXPECT_EQ(savedWidth(), 0U);
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("asked", "asked")) << "the next request is a new one";
}

TEST_F(ProgramExit, AQuestionThatCannotBeAskedIsAskedByTheNextRequest) {
    addPendingEntry();
    answer = []() -> int { throw std::bad_alloc(); };
    EXPECT_THROW(exit_.exitProgram(ExitMode::AskFirst), std::bad_alloc);
    answer = [] { return IDYES; };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_EQ(events.back(), "quit 0");
}

TEST_F(ProgramExit, ARefusalOfTheRunKeyIsIgnored) {
    runKeyFails = true;
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("hidden", "icon removed", "columns saved", "schedule saved",
                                    "autostart written", "quit 0"));
    preferences_.autostart = false;
    events.clear();
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("hidden", "icon removed", "columns saved", "schedule saved",
                                    "autostart deleted", "quit 0"));
}

TEST_F(ProgramExit, TheEndOfTheSessionSavesBeforeItAsks) {
    addPendingEntry();
    answer = [] { return IDNO; };
    exit_.onSessionEnd();
    EXPECT_THAT(events, ElementsAre("columns saved", "schedule saved", "asked"));
    EXPECT_EQ(savedWidth(), 123U);
    EXPECT_TRUE(isShown());
    answer = [] { return IDYES; };
    exit_.onSessionEnd();
    EXPECT_EQ(events.back(), "quit 0");
}

TEST_F(ProgramExit, TheEndOfTheSessionSavesAlsoWhileTheQuestionStands) {
    addPendingEntry();
    answer = [&] {
        addPendingEntry();
        exit_.onSessionEnd();
        EXPECT_THAT(events, ElementsAre("asked", "columns saved", "schedule saved"))
            << "and asks no second question";
        return IDNO;
    };
    exit_.exitProgram(ExitMode::AskFirst);
    EXPECT_THAT(events, ElementsAre("asked", "columns saved", "schedule saved"));
    ASSERT_EQ(store_.saved.size(), 1U);
    EXPECT_EQ(store_.saved[0].size(), 2U);
    EXPECT_TRUE(isShown());
}

} // namespace
