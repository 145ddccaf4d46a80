// The commands of the real program, by menu, key, mouse and drop, and what its menus show.

#include "lib/base/opsys.h"
#include "lib/base/registry.h"
#include "lib/base/trayicon.h"
#include "resources/ids.h"
#include "scheduler/model/schedulefile.h"
#include "scheduler/run/edition.h"
#include "tests/program/listdriver.h"
#include "tests/program/scheduledriver.h"
#include "tests/program/witnessdriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using base::TimeSpan;
using base::TimeValue;
using driver::ListDriver;
using driver::savedSchedule;
using driver::SchedulerProcess;
using driver::SeenItem;
using driver::waitUntil;
using driver::WitnessDriver;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int nextRunColumn = 3;

/// One that never becomes due in a start by hand.
ScheduledProject sleeping(const std::string& path) {
    ScheduledProject entry;
    entry.path = path;
    entry.kind = ScheduleKind::AtStartup;
    return entry;
}

ScheduledProject after(std::int32_t position, const std::string& path) {
    ScheduledProject entry;
    entry.path = path;
    entry.kind = ScheduleKind::AfterProject;
    entry.afterIndex = position;
    return entry;
}

class Commands : public ::testing::Test {
protected:
    void SetUp() override {
        driver::saveEntries({});
        base::deleteKey(HKEY_CURRENT_USER, "Software\\Brindlewood\\scheduler");
    }

    void startWith(const std::vector<ScheduledProject>& entries, const std::string& switches = "") {
        driver::saveEntries(entries);
        ASSERT_TRUE(scheduler_.start(switches));
        list_ = std::make_unique<ListDriver>(scheduler_.window());
        witness_ = std::make_unique<WitnessDriver>(scheduler_.window(), list_->handle());
        ASSERT_TRUE(witness_->isThere());
    }

    HWND window() const { return scheduler_.window(); }
    const ListDriver& list() const { return *list_; }
    const WitnessDriver& witness() const { return *witness_; }

    /// Carries a command out before it returns.
    void carryOut(int command) const { SendMessageA(window(), WM_COMMAND, static_cast<WPARAM>(command), 0); }

    std::vector<SeenItem> barMenu(char letter) const {
        return witness().menuOpenedBy(
            [&] { PostMessageA(window(), WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(letter)); });
    }
    std::vector<SeenItem> itemMenu() const {
        return witness().menuOpenedBy([&] {
            PostMessageA(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(list().handle()),
                         MAKELPARAM(50, 50));
        });
    }
    std::vector<SeenItem> trayMenu() const {
        return witness().menuOpenedBy(
            [&] { PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN); });
    }

    /// The Edit menu and the item menu for what is selected now: the same commands, other texts.
    void expectProjectMenus(bool oneSelected, bool anySelected, const std::string& enableText,
                            bool canOpen) const {
        const bool none = !anySelected;
        EXPECT_THAT(barMenu('e'), ElementsAre(SeenItem{IDM_ADD, "&Add...", true, none},
                                              SeenItem{IDM_EDIT, "&Edit...", oneSelected, oneSelected},
                                              SeenItem{IDM_DELETE, "&Delete", anySelected, false},
                                              SeenItem{IDM_ENABLE, enableText, anySelected, false},
                                              SeenItem{0, "", true, false},
                                              SeenItem{IDM_RUN, "&Run this project", anySelected, false},
                                              SeenItem{IDM_OPEN, "&Open this project", canOpen, false}));
        EXPECT_THAT(itemMenu(),
                    ElementsAre(SeenItem{IDM_ADD, "&Add...", true, none},
                                SeenItem{IDM_EDIT, "&Edit...", oneSelected, oneSelected},
                                SeenItem{IDM_DELETE, "&Delete", anySelected, false},
                                SeenItem{IDM_ENABLE, enableText, anySelected, false},
                                SeenItem{0, "", true, false}, SeenItem{IDM_OPEN, "&Open...", canOpen, false},
                                SeenItem{IDM_RUN, "&Run now", anySelected, false}));
    }

    /// What has the keyboard in the program; null while the program is not in the foreground.
    HWND focusedWindow() const {
        GUITHREADINFO information{};
        information.cbSize = sizeof(information);
        GetGUIThreadInfo(GetWindowThreadProcessId(window(), nullptr), &information);
        return information.hwndFocus;
    }

    /// Keys as from the keyboard: pressed in this order and let go of again.
    static void press(const std::vector<WORD>& keys) {
        const auto send = [](WORD key, DWORD flags) {
            INPUT input{};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.dwFlags = flags;
            SendInput(1, &input, sizeof(input));
        };
        for (const WORD key : keys)
            send(key, 0);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            send(*key, KEYEVENTF_KEYUP);
    }

    HWND waitForBox() const {
        waitUntil([&] { return scheduler_.messageBox() != nullptr; });
        return scheduler_.messageBox();
    }

    SchedulerProcess scheduler_;
    std::unique_ptr<ListDriver> list_;
    std::unique_ptr<WitnessDriver> witness_;
};

TEST_F(Commands, MenusForNoneOneAndSeveralSelected) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra"), sleeping("run:c")};
    entries[1].disabled = 1;
    startWith(entries);
    expectProjectMenus(false, false, "Enable", false);
    list().select({0});
    expectProjectMenus(true, true, "Disable", true);
    list().select({1});
    expectProjectMenus(true, true, "Enable", true);
    list().select({2});
    expectProjectMenus(true, true, "Disable", false);
    list().select({0, 1});
    expectProjectMenus(false, true, "Enable/disable", true);
    list().select({0, 2});
    expectProjectMenus(false, true, "Disable", true);
}

TEST_F(Commands, FileAndHelpMenusAndTheIconsMenu) {
    startWith({sleeping("a.kra")});
    for (const std::string text : {"Suspend", "Resume"}) {
        EXPECT_THAT(barMenu('f'), ElementsAre(SeenItem{IDM_PREFERENCES, "&Preferences..."}, SeenItem{},
                                              SeenItem{IDM_SUSPEND, text}, SeenItem{IDM_CLOSE, "&Close"},
                                              SeenItem{IDM_EXIT, "E&xit"}));
        EXPECT_THAT(trayMenu(), ElementsAre(SeenItem{IDM_DISPLAY, "&Display", true, true},
                                            SeenItem{IDM_SUSPEND, text}, SeenItem{IDM_EXIT, "E&xit"}));
        carryOut(IDM_SUSPEND);
    }
    EXPECT_THAT(barMenu('h'), ElementsAre(SeenItem{IDM_ABOUT, "&About the Corvane Scheduler..."}));
}

TEST_F(Commands, TheWindowsOwnMenuIsLeftToThePlatform) {
    startWith({});
    const std::vector<SeenItem> items =
        witness().menuOpenedBy([&] { PostMessageA(window(), WM_SYSCOMMAND, SC_KEYMENU, ' '); });
    bool closeIsDefault = false;
    for (const SeenItem& item : items)
        closeIsDefault |= item.command == SC_CLOSE && item.isDefault;
    EXPECT_TRUE(closeIsDefault);
}

TEST_F(Commands, TheIconsMenuLeavesAHiddenWindowHidden) {
    startWith({}, "/s");
    EXPECT_EQ(trayMenu().size(), 3U);
    EXPECT_FALSE(IsWindowVisible(window()));
}

TEST_F(Commands, TheIconsMenuOfAHiddenWindowKeepsNoKeys) {
    startWith({sleeping("a.kra")}, "/s");
    const HWND other = CreateWindowExA(0, "STATIC", "another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       100, 100, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    ASSERT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    AllowSetForegroundWindow(ASFW_ANY);
    EXPECT_EQ(trayMenu().size(), 3U);
    EXPECT_TRUE(waitUntil([&] { return GetForegroundWindow() == other; }));
    DestroyWindow(other);
}

TEST_F(Commands, AKeyThatReachesAHiddenWindowDoesNothing) {
    startWith({sleeping("a.kra"), sleeping("b.kra")});
    list().select({0});
    carryOut(IDM_CLOSE);
    const LONG before = witness().commands();
    list().pressKey(VK_DELETE);
    ASSERT_TRUE(waitUntil([&] { return witness().commands() > before; }));
    SendMessageA(window(), WM_NULL, 0, 0);
    EXPECT_EQ(list().rowCount(), 2);
    carryOut(IDM_DELETE);
    EXPECT_EQ(list().rowCount(), 1) << "but a command of the menu's kind does";
}

TEST_F(Commands, TheIconsMenuCarriesOutWhatIsChosen) {
    startWith({}, "/s");
    PostMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_RBUTTONDOWN);
    ASSERT_TRUE(waitUntil([&] { return witness().isMenuOpen(); }));
    PostMessageA(window(), WM_KEYDOWN, VK_DOWN, 1);
    PostMessageA(window(), WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(window()) != FALSE; }));
}

TEST_F(Commands, OtherNoticesOfTheIconDoNothing) {
    startWith({}, "/s");
    const LONG menus = witness().menus();
    for (const UINT message :
         {UINT{0}, UINT{WM_MOUSEMOVE}, UINT{WM_LBUTTONUP}, UINT{WM_RBUTTONUP}, UINT{WM_RBUTTONDBLCLK},
          UINT{WM_MBUTTONDOWN}, UINT{WM_CONTEXTMENU}, UINT{0xFFFF}})
        SendMessageA(window(), base::WM_TRAY_NOTIFY, 7, static_cast<LPARAM>(message));
    EXPECT_FALSE(IsWindowVisible(window()));
    EXPECT_EQ(witness().menus(), menus);
    SendMessageA(window(), base::WM_TRAY_NOTIFY, 7, WM_LBUTTONDBLCLK);
    EXPECT_TRUE(IsWindowVisible(window())) << "whatever the other parameter";
}

TEST_F(Commands, AContextMenuElsewhereDoesNotOpen) {
    startWith({sleeping("a.kra")});
    const LONG menus = witness().menus();
    SendMessageA(window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window()), MAKELPARAM(50, 50));
    EXPECT_EQ(witness().menus(), menus);
}

TEST_F(Commands, DeletingInTheMiddleOfAChainTiesItsEndsTogether) {
    startWith({sleeping("a.kra"), sleeping("b.kra"), after(1, "c.kra"), after(2, "d.kra")});
    list().select({2});
    carryOut(IDM_DELETE);
    EXPECT_EQ(scheduler_.messageBox(), nullptr) << "nothing is asked";
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "b", "d"));
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 3U);
    EXPECT_EQ(saved[2].path, "d.kra");
    EXPECT_EQ(saved[2].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(saved[2].afterIndex, 1);
    EXPECT_EQ(list().cell(2, nextRunColumn), "waiting for b");
}

TEST_F(Commands, AFollowerOfTheDeletedFirstEntryRunsAtStartup) {
    startWith({sleeping("a.kra"), after(0, "b.kra"), after(0, "c.kra")});
    list().select({0});
    carryOut(IDM_DELETE);
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved[0].kind, ScheduleKind::AtStartup) << "it would follow itself";
    EXPECT_EQ(saved[1].kind, ScheduleKind::AfterProject);
    EXPECT_EQ(saved[1].afterIndex, 0);
}

TEST_F(Commands, TheDeleteKeyDeletesWhatIsSelected) {
    startWith({sleeping("a.kra"), sleeping("b.kra"), sleeping("c.kra")});
    list().select({0, 2});
    list().pressKey(VK_DELETE);
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 1; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("b"));
    ASSERT_EQ(savedSchedule().size(), 1U);
    EXPECT_EQ(savedSchedule()[0].path, "b.kra");
}

TEST_F(Commands, WithoutASelectionNothingIsDone) {
    const std::vector<ScheduledProject> entries = {sleeping("a.kra")};
    startWith(entries);
    for (const int command : {IDM_DELETE, IDM_RUN, IDM_ENABLE, IDM_OPEN})
        carryOut(command);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
    EXPECT_EQ(list().cell(0, nextRunColumn), "next startup");
    EXPECT_EQ(savedSchedule().size(), 1U);
}

TEST_F(Commands, AnEntryCanBeDeletedWhileItRuns) {
    const driver::SampleSpider spider;
    startWith({sleeping(spider.makeProject("news.kra", "seconds=2\n")), sleeping("b.kra")});
    list().select({0});
    carryOut(IDM_RUN);
    ASSERT_TRUE(waitUntil([&] { return spider.logged("start run 1") == 1; }));
    carryOut(IDM_DELETE);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("b"));
    ASSERT_TRUE(waitUntil([&] { return spider.logged("end run 1") == 1; }));
    Sleep(500);
    EXPECT_TRUE(scheduler_.isRunning());
    EXPECT_EQ(list().cell(0, 4), "Never");
}

TEST_F(Commands, TogglingAMixedSelectionLeavesItMixed) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra"), sleeping("c.kra")};
    entries[1].disabled = 1;
    startWith(entries);
    list().select({0, 1});
    carryOut(IDM_ENABLE);
    EXPECT_THAT(list().columnTexts(nextRunColumn), ElementsAre("(disabled)", "next startup", "next startup"));
    EXPECT_THAT(list().selectedRows(), ElementsAre(0, 1));
    const auto saved = savedSchedule();
    EXPECT_EQ(saved[0].disabled, 1);
    EXPECT_EQ(saved[1].disabled, 0);
    EXPECT_EQ(saved[2].disabled, 0);
}

TEST_F(Commands, EnablingComputesTheNextRunAnew) {
    ScheduledProject entry = sleeping("a.kra");
    entry.kind = ScheduleKind::Once;
    entry.time = TimeValue::now() + TimeSpan::fromDays(1);
    entry.disabled = 1;
    startWith({entry});
    list().select({0});
    carryOut(IDM_ENABLE);
    EXPECT_EQ(savedSchedule()[0].nextRun, entry.time);
    EXPECT_EQ(list().cell(0, nextRunColumn).find("tomorrow at "), 0U);
}

TEST_F(Commands, RunNowRunsEverySelectedEntryAtOnce) {
    const driver::SampleSpider spider;
    startWith({sleeping(spider.makeProject("a.kra", "seconds=2\n")),
               sleeping(spider.makeProject("b.kra", "seconds=2\n")),
               sleeping(spider.makeProject("c.kra", "ms=1\n"))});
    list().select({0, 1});
    carryOut(IDM_RUN);
    EXPECT_TRUE(waitUntil([&] { return spider.logged("end run") == 2; }));
    EXPECT_EQ(spider.logged("start run 1"), 1U);
    EXPECT_EQ(spider.logged("start run 2"), 1U) << "what the user starts waits for nobody";
    EXPECT_EQ(spider.logged("c.kra"), 0U);
}

TEST_F(Commands, RunNowRunsADisabledEntryAndWhileSuspended) {
    const driver::SampleSpider spider;
    ScheduledProject entry = sleeping(spider.makeProject("a.kra", "ms=100\n"));
    entry.disabled = 1;
    startWith({entry});
    carryOut(IDM_SUSPEND);
    list().select({0});
    carryOut(IDM_RUN);
    EXPECT_TRUE(waitUntil([&] { return spider.logged("end run 1") == 1; }));
}

TEST_F(Commands, OpenStartsTheSpiderWithEverySelectedProject) {
    const driver::SampleSpider spider;
    const std::string first = spider.makeProject("a.kra", "");
    const std::string second = spider.makeProject("b.krb", "");
    startWith({sleeping(first), sleeping("run:cmd /c exit"), sleeping(second)});
    list().select({0, 1, 2});
    carryOut(IDM_OPEN);
    EXPECT_TRUE(waitUntil([&] { return spider.log().size() == 2; }));
    EXPECT_EQ(spider.logged("open run -: \"" + spider.program() + "\" \"" + first + "\""), 1U);
    EXPECT_EQ(spider.logged("open run -: \"" + spider.program() + "\" \"" + second + "\""), 1U);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
}

TEST_F(Commands, OpenSaysWhichSpiderIsMissing) {
    const driver::SampleSpider spider;
    const std::string project = spider.makeProject("a.kra", "");
    ASSERT_TRUE(DeleteFileA(spider.program().c_str()));
    startWith({sleeping(project)});
    list().select({0});
    scheduler_.command(IDM_OPEN);
    const HWND box = waitForBox();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(driver::textOf(box), "Corvane Scheduler");
    EXPECT_EQ(GetWindow(box, GW_OWNER), window());
    const std::string edition = scheduler::editionName(project);
    EXPECT_FALSE(edition.empty());
    EXPECT_EQ(SchedulerProcess::textOfBox(box),
              "Cannot find " + edition + "!  " + edition +
                  " must be installed on this computer in order to open or run "
                  "this project.");
    SchedulerProcess::press(box, IDOK);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.messageBox() == nullptr; }));
}

TEST_F(Commands, DroppedProjectsAreAddedAtTheEndWithDefaultSettings) {
    startWith({sleeping("a.kra")});
    witness().drop({"C:\\Sites\\one.kra", "C:\\Sites\\notes.txt", "C:\\Sites\\TWO.KRB", "C:\\Sites\\x.krab",
                    "C:\\Sites\\three.krc", "C:\\Sites\\kra", "C:\\Sites\\y.krd"});
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 4; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "one", "TWO", "three"));
    const auto saved = savedSchedule();
    ASSERT_EQ(saved.size(), 4U);
    ScheduledProject expected;
    expected.path = "C:\\Sites\\one.kra";
    expected.nextRun = TimeValue::never();
    EXPECT_TRUE(saved[1] == expected);
    EXPECT_EQ(saved[2].path, "C:\\Sites\\TWO.KRB");
    EXPECT_EQ(saved[3].path, "C:\\Sites\\three.krc");
}

TEST_F(Commands, OtherDroppedFilesChangeNothing) {
    startWith({sleeping("a.kra")});
    const std::string before = driver::readBytes(scheduler::schedulePath());
    witness().drop({"C:\\Sites\\notes.txt", "C:\\Sites\\a.kr", "C:\\Sites\\a.kra.bak"});
    witness().drop({});
    SendMessageA(window(), WM_NULL, 0, 0);
    Sleep(300);
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_EQ(scheduler_.messageBox(), nullptr);
    EXPECT_EQ(driver::readBytes(scheduler::schedulePath()), before);
}

TEST_F(Commands, DroppedFilesComeLastAlsoInASortedList) {
    startWith({sleeping("b.kra"), sleeping("a.kra")});
    list().clickHeader(0);
    witness().drop({"C:\\aa.kra"});
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 3; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "b", "aa"));
}

TEST_F(Commands, SuspendAndResumeShowInTheTitle) {
    startWith({sleeping("a.kra")});
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler (suspended)");
    carryOut(IDM_SUSPEND);
    EXPECT_EQ(driver::textOf(window()), "Corvane Scheduler");
}

TEST_F(Commands, TheTestCommandShowsWhatWouldRun) {
    ScheduledProject entry = sleeping("C:\\Sites\\a.kra");
    entry.kind = ScheduleKind::Once;
    entry.time = TimeValue::now() + TimeSpan::fromSeconds(3);
    startWith({entry});
    carryOut(IDM_SUSPEND);
    ASSERT_TRUE(waitUntil([&] { return TimeValue::now() > entry.time; }));
    EXPECT_EQ(list().cell(0, nextRunColumn), "(suspended)");
    carryOut(IDM_TEST);
    EXPECT_EQ(list().cell(0, nextRunColumn), "Running");
}

TEST_F(Commands, EnterIsEdit) {
    startWith({sleeping("a.kra")});
    list().select({0});
    const LONG before = witness().commands();
    list().pressKey(VK_RETURN);
    EXPECT_TRUE(waitUntil([&] { return witness().commands() > before; }));
    EXPECT_EQ(witness().lastCommand(), UINT{IDM_EDIT});
}

TEST_F(Commands, ADoubleClickIsEdit) {
    startWith({sleeping("a.kra"), sleeping("b.kra")});
    const LONG before = witness().commands();
    list().doubleClickRow(1);
    EXPECT_TRUE(waitUntil([&] { return witness().commands() > before; }));
    EXPECT_EQ(witness().lastCommand(), UINT{IDM_EDIT});
    EXPECT_THAT(list().selectedRows(), ElementsAre(1));
}

TEST_F(Commands, ControlShiftTIsTheTestCommand) {
    startWith({sleeping("a.kra")});
    SetForegroundWindow(window());
    ASSERT_TRUE(waitUntil([&] { return focusedWindow() == list().handle(); }));
    const LONG before = witness().commands();
    press({VK_CONTROL, 'T'});
    press({VK_SHIFT, 'T'});
    press({VK_DELETE}); // with nothing selected, to know that the others have gone by
    EXPECT_TRUE(waitUntil([&] { return witness().lastCommand() == UINT{IDM_DELETE}; }));
    EXPECT_EQ(witness().commands(), before + 1) << "not with one of the keys alone";
    press({VK_CONTROL, VK_SHIFT, 'T'});
    EXPECT_TRUE(waitUntil([&] { return witness().commands() > before + 1; }));
    EXPECT_EQ(witness().lastCommand(), UINT{IDM_TEST});
}

TEST_F(Commands, WhatACommandOpensMakesTheWindowWaitEvenWhileNoWindowIsActive) {
    startWith({sleeping("a.kra")}, "/s");
    list().select({0});
    for (const int command : {IDM_ADD, IDM_EDIT, IDM_PREFERENCES, IDM_ABOUT}) {
        scheduler_.command(command);
        const HWND dialog = waitForBox();
        ASSERT_NE(dialog, nullptr) << command;
        EXPECT_FALSE(IsWindowEnabled(window())) << command;
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), window()) << command;
        PostMessageA(dialog, WM_CLOSE, 0, 0);
        EXPECT_TRUE(waitUntil([&] { return !IsWindow(dialog) && IsWindowEnabled(window()); })) << command;
    }
}

TEST_F(Commands, AnEditFindsItsEntryWhereverThatIsMeanwhile) {
    startWith({sleeping("run:a"), sleeping("run:b"), sleeping("run:c"), sleeping("run:d")});
    for (const int deleted : {0, 1}) { // one before the edited entry, and then one behind it
        list().select({deleted == 0 ? 1 : 0});
        scheduler_.command(IDM_EDIT);
        const HWND sheet = waitForBox();
        ASSERT_NE(sheet, nullptr);
        list().select({deleted});
        carryOut(IDM_DELETE);
        SchedulerProcess::press(sheet, IDOK);
        ASSERT_TRUE(waitUntil([&] { return !IsWindow(sheet) && IsWindowEnabled(window()); }));
    }
    EXPECT_THAT(list().columnTexts(0), ElementsAre("run:b", "run:d"));
}

TEST_F(Commands, AnEditOfAnEntryThatIsDeletedMeanwhileChangesNoOther) {
    startWith({sleeping("run:a"), sleeping("run:b"), sleeping("run:c")});
    list().select({1});
    scheduler_.command(IDM_EDIT);
    const HWND sheet = waitForBox();
    ASSERT_NE(sheet, nullptr);
    carryOut(IDM_DELETE);
    SchedulerProcess::press(sheet, IDOK);
    ASSERT_TRUE(waitUntil([&] { return !IsWindow(sheet) && IsWindowEnabled(window()); }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("run:a", "run:c"));
}

TEST_F(Commands, TheKeyboardIsTheListsWheneverTheWindowGetsIt) {
    startWith({sleeping("a.kra")});
    SetForegroundWindow(window());
    ASSERT_TRUE(waitUntil([&] { return focusedWindow() == list().handle(); }));
    scheduler_.command(IDM_PREFERENCES);
    const HWND dialog = waitForBox();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(waitUntil([&] { return GetParent(focusedWindow()) == dialog; }));
    SchedulerProcess::press(dialog, IDCANCEL);
    EXPECT_TRUE(waitUntil([&] { return focusedWindow() == list().handle(); })) << "after a dialog";

    carryOut(IDM_CLOSE);
    ASSERT_TRUE(waitUntil([&] { return focusedWindow() != list().handle(); }));
    carryOut(IDM_DISPLAY);
    EXPECT_TRUE(waitUntil([&] { return focusedWindow() == list().handle(); })) << "after it was hidden";
}

TEST_F(Commands, TypingFindsTheProjectThatBeginsSo) {
    startWith({sleeping("alpha.kra"), sleeping("Beta.kra"), sleeping("gamma.kra"), sleeping("beyond.kra")});
    list().select({0});
    for (const char letter : std::string("bey"))
        PostMessageA(list().handle(), WM_CHAR, static_cast<WPARAM>(letter), 1);
    EXPECT_TRUE(waitUntil([&] { return list().focusedRow() == 3; }));
    EXPECT_THAT(list().selectedRows(), ElementsAre(3));
}

TEST_F(Commands, ArrowsMoveTheSelection) {
    startWith({sleeping("a.kra"), sleeping("b.kra"), sleeping("c.kra")});
    list().select({0});
    list().pressKey(VK_DOWN);
    EXPECT_TRUE(waitUntil([&] { return list().focusedRow() == 1; }));
    list().pressKey(VK_END);
    EXPECT_TRUE(waitUntil([&] { return list().focusedRow() == 2; }));
    EXPECT_THAT(list().selectedRows(), ElementsAre(2));
}

TEST_F(Commands, ANewTaskbarGetsTheIconAgain) {
    startWith({});
    const UINT made = RegisterWindowMessageA("TaskbarCreated");
    // Without its icon the program works on; with it, the shell answers as before.
    SendMessageA(window(), made, 0, 0);
    SendMessageA(window(), base::WM_TRAY_NOTIFY, 0, WM_LBUTTONDBLCLK);
    EXPECT_TRUE(IsWindowVisible(window()));
    NOTIFYICONDATAA icon{};
    icon.cbSize = NOTIFYICONDATAA_V1_SIZE;
    icon.hWnd = window();
    ASSERT_TRUE(Shell_NotifyIconA(NIM_DELETE, &icon)) << "it was there";
    ASSERT_FALSE(Shell_NotifyIconA(NIM_DELETE, &icon)) << "once";
    SendMessageA(window(), made, 0, 0);
    EXPECT_TRUE(Shell_NotifyIconA(NIM_DELETE, &icon)) << "and is there again";
}

} // namespace
