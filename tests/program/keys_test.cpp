#include "resources/ids.h"
#include "tests/program/editordriver.h"
#include "tests/program/programtest.h"

#include <gmock/gmock.h>

using driver::sleeping;
using driver::waitUntil;
using testing::ElementsAre;

namespace {

class Keys : public driver::ProgramTest {
protected:
    bool listGetsFocus() const {
        return waitUntil([&] { return scheduler_.focused() == list().handle(); });
    }
};

TEST_F(Keys, EnterOrDoubleClickOpensTheEditorAndEnterConfirmsIt) {
    startWith({sleeping("run:a"), sleeping("run:b")});
    const driver::EditorDriver editor(scheduler_);
    list().select({0});
    list().pressKey(VK_RETURN);
    for (const std::string path : {"run:enter", "run:double click"}) {
        const HWND sheet = waitForBox();
        ASSERT_NE(sheet, nullptr);
        EXPECT_EQ(driver::textOf(sheet), "Edit Scheduled Task");
        SetDlgItemTextA(GetDlgItem(sheet, IDD_PROJECT_PAGE), IDC_PROJECT_PATH, path.c_str());
        ASSERT_TRUE(waitUntil([&] { return IsChild(sheet, scheduler_.focused()) != FALSE; }));
        editor.pressKey(VK_RETURN);
        ASSERT_TRUE(listGetsFocus());
        list().doubleClickRow(1);
    }
    EXPECT_THAT(list().columnTexts(0), ElementsAre("run:enter", "run:double click"));
    EXPECT_THAT(list().selectedRows(), ElementsAre(1));
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
    // Only one letter, because a second one would have to arrive within the platform's time limit.
    PostMessageA(list().handle(), WM_CHAR, 'b', 1);
    EXPECT_TRUE(waitUntil([&] { return list().focusedRow() == 2; }));
    EXPECT_THAT(list().selectedRows(), ElementsAre(2));
}

} // namespace
