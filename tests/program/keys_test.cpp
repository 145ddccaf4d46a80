// The real program without a mouse: keys in its list and in its editor.

#include "resources/ids.h"
#include "scheduler/ui/framework/browselayout.h"
#include "tests/program/commandsfixture.h"
#include "tests/program/editordriver.h"
#include "tests/support/schedulekinds.h"

#include <gmock/gmock.h>

#include <string>

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

TEST_F(Keys, TypingSelectsTheProjectThatBeginsWithIt) {
    startWith({sleeping("alpha.kra"), sleeping("Beta.kra"), sleeping("gamma.kra"), sleeping("beyond.kra")});
    list().select({0});
    for (const char letter : std::string("bey"))
        PostMessageA(list().handle(), WM_CHAR, static_cast<WPARAM>(letter), 1);
    EXPECT_TRUE(waitUntil([&] { return list().focusedRow() == 3; }));
    EXPECT_THAT(list().selectedRows(), ElementsAre(3));
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
    for (const auto& [letter, id] : {std::pair{'r', IDC_RUN_COMMAND},
                                     {'a', IDC_AUTOCONNECT},
                                     {'t', IDC_TIME_LIMIT},
                                     {'p', IDC_PROJECT_PATH}})
        expectFocus(letter, id);
    editor_.pressWithAlt('d');
    EXPECT_TRUE(waitUntil([&] { return editor_.isChecked(IDC_DISCONNECT); }));

    editor_.turnTo(IDD_SCHEDULE_PAGE);
    ASSERT_TRUE(editor_.focusGoesTo(buttonOf(ScheduleKind::AfterProject)));
    struct Letters {
        char ofKind;
        ScheduleKind kind;
        char ofField;
        int field;
    };
    for (const Letters& letters : {Letters{'s', ScheduleKind::AtStartup, 'a', IDC_STARTUP_DELAY},
                                   Letters{'h', ScheduleKind::Hourly, 'a', IDC_HOURLY_MINUTE},
                                   Letters{'d', ScheduleKind::Daily, 'a', IDC_DAILY_TIME},
                                   Letters{'m', ScheduleKind::Monthly, 'o', IDC_MONTHLY_DAY},
                                   Letters{'m', ScheduleKind::Monthly, 'a', IDC_MONTHLY_TIME},
                                   Letters{'j', ScheduleKind::Once, 'a', IDC_ONCE_TIME},
                                   Letters{'w', ScheduleKind::AfterProject, 'a', IDC_AFTER_DELAY}}) {
        expectFocus(letters.ofKind, buttonOf(letters.kind));
        ASSERT_TRUE(waitUntil(
            [&] { return editor_.isChecked(buttonOf(letters.kind)) && editor_.isShown(letters.field); }));
        expectFocus(letters.ofField, letters.field);
    }
}

} // namespace
