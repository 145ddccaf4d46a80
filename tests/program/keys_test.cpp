// The commands of the real program by key and mouse.

#include "resources/ids.h"
#include "tests/program/commandsfixture.h"
#include "tests/program/scheduledriver.h"

#include <gmock/gmock.h>

#include <string>

using driver::after;
using driver::Commands;
using driver::savedSchedule;
using driver::SchedulerProcess;
using driver::sleeping;
using driver::waitUntil;
using testing::ElementsAre;

namespace {

TEST_F(Commands, TheDeleteKeyDeletesWhatIsSelected) {
    startWith({sleeping("a.kra"), sleeping("b.kra"), sleeping("c.kra")});
    list().select({0, 2});
    list().pressKey(VK_DELETE);
    EXPECT_TRUE(waitUntil([&] { return list().rowCount() == 1; }));
    EXPECT_THAT(list().columnTexts(0), ElementsAre("b"));
    ASSERT_EQ(savedSchedule().size(), 1U);
    EXPECT_EQ(savedSchedule()[0].path, "b.kra");
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
    ASSERT_TRUE(waitUntil([&] { return scheduler_.focused() == list().handle(); }));
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

TEST_F(Commands, TheKeyboardIsTheListsWheneverTheWindowGetsIt) {
    startWith({sleeping("a.kra")});
    SetForegroundWindow(window());
    ASSERT_TRUE(waitUntil([&] { return scheduler_.focused() == list().handle(); }));
    scheduler_.command(IDM_PREFERENCES);
    const HWND dialog = waitForBox();
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(waitUntil([&] { return GetParent(scheduler_.focused()) == dialog; }));
    SchedulerProcess::press(dialog, IDCANCEL);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() == list().handle(); })) << "after a dialog";

    carryOut(IDM_CLOSE);
    ASSERT_TRUE(waitUntil([&] { return scheduler_.focused() != list().handle(); }));
    carryOut(IDM_DISPLAY);
    EXPECT_TRUE(waitUntil([&] { return scheduler_.focused() == list().handle(); })) << "after it was hidden";
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

} // namespace
