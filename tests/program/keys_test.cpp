// The real program without a mouse: keys in its list and in its editor.

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/program/commandsfixture.h"
#include "tests/program/editordriver.h"
#include "tests/support/schedulekinds.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>

using driver::sleeping;
using driver::waitUntil;
using scheduler::ScheduleKind;
using test::buttonOf;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

class Keys : public driver::Commands {
protected:
    void openAdd() {
        startWith({sleeping("a.kra")});
        ASSERT_TRUE(editor_.openAdd());
    }

    bool listGetsFocus() const {
        return waitUntil([&] { return scheduler_.focused() == list().handle(); });
    }

    std::vector<int> tabStops() const {
        std::vector<int> ids;
        for (const HWND stop : editor_.tabStops())
            ids.push_back(GetDlgCtrlID(stop));
        return ids;
    }

    driver::EditorDriver editor_{scheduler_};
};

TEST_F(Keys, EnterAndADoubleClickInTheListEditAndEnterInTheEditorIsOk) {
    startWith({sleeping("run:a"), sleeping("run:b")});
    list().select({0});
    list().pressKey(VK_RETURN);
    for (const std::string path : {"run:enter", "run:double click"}) {
        const HWND sheet = waitForBox();
        ASSERT_NE(sheet, nullptr);
        EXPECT_EQ(driver::textOf(sheet), "Edit Scheduled Task");
        SetDlgItemTextA(GetDlgItem(sheet, IDD_PROJECT_PAGE), IDC_PROJECT_PATH, path.c_str());
        ASSERT_TRUE(waitUntil([&] { return IsChild(sheet, scheduler_.focused()) != FALSE; }));
        editor_.pressKey(VK_RETURN);
        ASSERT_TRUE(listGetsFocus());
        list().doubleClickRow(1);
    }
    EXPECT_THAT(list().columnTexts(0), ElementsAre("run:enter", "run:double click"));
    EXPECT_THAT(list().selectedRows(), ElementsAre(1));
}

TEST_F(Keys, ControlShiftTIsTheTestCommand) {
    startWith({sleeping("a.kra")});
    SetForegroundWindow(window());
    ASSERT_TRUE(listGetsFocus());
    const LONG before = witness().commands();
    press({VK_CONTROL, 'T'});
    press({VK_SHIFT, 'T'});
    press({VK_DELETE}); // with nothing selected, to know that the others have gone by
    EXPECT_TRUE(waitUntil([&] { return witness().lastCommand() == UINT{IDM_DELETE}; }));
    EXPECT_EQ(witness().commands(), before + 1) << "not with one of the keys alone";
    press({VK_CONTROL, VK_SHIFT, 'T'});
    EXPECT_TRUE(waitUntil([&] { return witness().lastCommand() == UINT{IDM_TEST}; }));
}

TEST_F(Keys, TheListHasTheFocusWheneverTheWindowBecomesActive) {
    startWith({sleeping("a.kra")});
    SetForegroundWindow(window());
    ASSERT_TRUE(listGetsFocus());
    scheduler_.command(IDM_PREFERENCES);
    const HWND dialog = waitForBox();
    ASSERT_TRUE(waitUntil([&] { return GetParent(scheduler_.focused()) == dialog; }));
    driver::SchedulerProcess::press(dialog, IDCANCEL);
    EXPECT_TRUE(listGetsFocus()) << "after a dialog";

    carryOut(IDM_CLOSE);
    ASSERT_TRUE(waitUntil([&] { return scheduler_.focused() != list().handle(); }));
    carryOut(IDM_DISPLAY);
    EXPECT_TRUE(listGetsFocus()) << "after it was hidden";
}

TEST_F(Keys, TypingALetterSelectsTheNextProjectThatBeginsWithIt) {
    startWith(
        {sleeping("alpha.kra"), sleeping("C:\\b\\Gamma.kra"), sleeping("Beta.kra"), sleeping("beyond.kra")});
    list().select({0});
    // One letter only: how soon a second one must follow is the platform's clock.
    PostMessageA(list().handle(), WM_CHAR, 'b', 1);
    EXPECT_TRUE(waitUntil([&] { return list().focusedRow() == 2; }));
    EXPECT_THAT(list().selectedRows(), ElementsAre(2));
}

TEST_F(Keys, AKeyThatReachesAHiddenWindowDoesNothing) {
    startWith({sleeping("a.kra"), sleeping("b.kra")});
    list().select({0});
    carryOut(IDM_CLOSE);
    const LONG before = witness().commands();
    list().pressKey(VK_DELETE);
    ASSERT_TRUE(waitUntil([&] { return witness().commands() > before; }));
    SendMessageA(window(), WM_NULL, 0, 0);
    EXPECT_EQ(list().rowCount(), 2);
    carryOut(IDM_DELETE);
    EXPECT_EQ(list().rowCount(), 1) << "a command that is no key's deletes";
}

TEST_F(Keys, TabGoesThroughTheEditorInReadingOrder) {
    openAdd();
    EXPECT_TRUE(editor_.focusGoesTo(IDC_PROJECT_PATH));
    constexpr int tabs = 0x3020; // of every property sheet
    EXPECT_THAT(tabStops(),
                ElementsAre(IDC_PROJECT_PATH, framework::browseButtonIdOf(IDC_PROJECT_PATH), IDC_RUN_COMMAND,
                            IDC_AUTOCONNECT, IDC_TIME_LIMIT, IDC_DISCONNECT, IDOK, IDCANCEL, tabs));
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind kind : test::allKinds) {
        ASSERT_TRUE(editor_.chooseKind(kind));
        ASSERT_TRUE(editor_.moveFocusTo(buttonOf(kind)));
        std::vector<int> wanted = {buttonOf(kind)};
        const std::vector<int> fields = test::controlsOf(kind).fields;
        wanted.insert(wanted.end(), fields.begin(), fields.end());
        wanted.insert(wanted.end(), {IDOK, IDCANCEL, tabs});
        EXPECT_THAT(tabStops(), ElementsAreArray(wanted));
    }
}

TEST_F(Keys, ArrowsGoThroughTheKinds) {
    openAdd();
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    for (const ScheduleKind kind : test::allKinds) {
        EXPECT_TRUE(editor_.focusGoesTo(buttonOf(kind)));
        EXPECT_TRUE(waitUntil([&] { return editor_.isChecked(buttonOf(kind)); }));
        editor_.pressKey(VK_DOWN);
    }
}

TEST_F(Keys, AltAndALetterGoToTheControlThatHasIt) {
    openAdd();
    const auto expectFocus = [&](char letter, int id) {
        editor_.pressWithAlt(letter);
        EXPECT_TRUE(editor_.focusGoesTo(id)) << letter;
    };
    expectFocus('r', IDC_RUN_COMMAND);
    expectFocus('a', IDC_AUTOCONNECT);
    editor_.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(editor_.focusGoesTo(IDC_KIND_AFTER_PROJECT));
    for (const auto& [letter, button, field] : {std::tuple{'s', IDC_KIND_STARTUP, IDC_STARTUP_DELAY},
                                                {'h', IDC_KIND_HOURLY, IDC_HOURLY_MINUTE},
                                                {'d', IDC_KIND_DAILY, IDC_DAILY_TIME},
                                                {'m', IDC_KIND_MONTHLY, IDC_MONTHLY_TIME},
                                                {'j', IDC_KIND_ONCE, IDC_ONCE_TIME},
                                                {'w', IDC_KIND_AFTER_PROJECT, IDC_AFTER_DELAY}}) {
        expectFocus(letter, button);
        ASSERT_TRUE(waitUntil([&, id = field] { return editor_.isShown(id); })) << letter;
        expectFocus('a', field); // the letter of a field of each kind
    }
}

} // namespace
