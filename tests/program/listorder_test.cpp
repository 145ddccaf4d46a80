// The list of the real program: the order of its rows, and the widths of its columns.

#include "resources/ids.h"
#include "tests/program/listtest.h"

#include <commctrl.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

using base::TimeSpan;
using base::TimeValue;
using driver::columns;
using driver::ListDriver;
using driver::nextRunColumn;
using driver::sleeping;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using ::testing::ElementsAre;

namespace {

class ListOrder : public driver::ListTest {};
class ListWidths : public driver::ListTest {};

TEST_F(ListOrder, AClickOnAHeaderSortsByItsTextsAndASecondOneTurnsThemRound) {
    const TimeValue now = TimeValue::now();
    std::vector<ScheduledProject> entries = {sleeping("b.kra"), sleeping("C.kra"), sleeping("a.kra"),
                                             sleeping("B.kra")};
    entries[0].lastResult = "10";
    entries[1].lastResult = "9";
    entries[2].kind = ScheduleKind::Once; // "(never)"
    entries[3].disabled = 1;
    entries[2].runCommand = RunCommand::RelinkFiles;
    entries[1].lastRun = now - TimeSpan::fromDays(100);
    entries[3].minutes = 5;
    startWith(entries);
    for (int column = 0; column < columns; ++column) {
        list().select({0, 2});
        std::vector<std::string> selected = {list().cell(0, 0), list().cell(2, 0)};
        std::ranges::sort(selected);
        for (const bool ascending : {true, false}) {
            list().clickHeader(column);
            const std::vector<std::string> texts = list().columnTexts(column);
            EXPECT_TRUE(ascending ? std::ranges::is_sorted(texts)
                                  : std::ranges::is_sorted(texts, std::greater()))
                << column;
            for (int other = 0; other < columns; ++other)
                EXPECT_EQ(list().sortArrow(other), other != column ? 0
                                                   : ascending     ? HDF_SORTUP
                                                                   : HDF_SORTDOWN);
            std::vector<std::string> still;
            for (const int row : list().selectedRows())
                still.push_back(list().cell(row, 0));
            std::ranges::sort(still);
            EXPECT_EQ(still, selected) << column;
        }
    }
    list().clickHeader(0);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("B", "C", "a", "b")) << "capitals come first";
}

TEST_F(ListOrder, TheKeyboardStaysOnItsEntryWhenTheRowsAreSorted) {
    startWith({sleeping("c.kra"), sleeping("a.kra"), sleeping("b.kra")});
    list().select({0});
    list().clickHeader(0);
    EXPECT_THAT(list().selectedRows(), ElementsAre(2));
    EXPECT_EQ(list().focusedRow(), 2);
}

TEST_F(ListOrder, SortingNextRunGoesByTextNotByTime) {
    std::vector<ScheduledProject> entries(3, sleeping("a.kra"));
    entries[0].kind = entries[1].kind = ScheduleKind::Once;
    entries[0].time = TimeValue::now() + TimeSpan::fromDays(1); // "tomorrow at ..."
    entries[1].time = TimeValue::now() - TimeSpan::fromDays(1); // "(never)"
    // entries[2]: "next startup"
    startWith(entries);
    list().clickHeader(nextRunColumn);
    const std::vector<std::string> texts = list().columnTexts(nextRunColumn);
    EXPECT_EQ(texts[0], "(never)");
    EXPECT_EQ(texts[1], "next startup");
    EXPECT_EQ(texts[2].find("tomorrow at "), 0U);
}

TEST_F(ListOrder, SortingLeavesTheScheduleInItsOrder) {
    startWith({sleeping("b.kra"), sleeping("a.kra")});
    list().clickHeader(0);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "b"));
    exitAndStart();
    EXPECT_THAT(list().columnTexts(0), ElementsAre("b", "a"));
}

TEST_F(ListOrder, DeletingASortedRowDeletesItsEntry) {
    startWith({sleeping("c.kra"), sleeping("a.kra"), sleeping("b.kra")});
    list().clickHeader(0);
    list().select({1}); // b
    SendMessageA(scheduler_.window(), WM_COMMAND, IDM_DELETE, 0);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "c"));
    EXPECT_TRUE(list().selectedRows().empty());
    EXPECT_EQ(list().focusedRow(), 1);
    ASSERT_EQ(driver::savedSchedule().size(), 2U);
    EXPECT_EQ(driver::savedSchedule()[0].path, "c.kra");
}

TEST_F(ListWidths, ColumnWidthsComeBackAsTheyWereLeft) {
    startWith({});
    for (int column = 0; column < columns; ++column)
        list().setColumnWidth(column, 40 + 10 * column);
    exitAndStart();
    for (int column = 0; column < columns; ++column)
        EXPECT_EQ(list().columnWidth(column), 40 + 10 * column);
}

TEST_F(ListWidths, AWidthThatMakesNoSenseIsIgnored) {
    startWith({});
    const int usual = list().columnWidth(0);
    EXPECT_GT(usual, 20);
    exitAndStart();
    scheduler_.kill();
    for (const std::uint32_t width : {4001U, 0x80000000U, 0xFFFFFFFFU}) {
        ASSERT_TRUE(base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Column0", width));
        ASSERT_TRUE(scheduler_.start());
        EXPECT_EQ(ListDriver(scheduler_.window()).columnWidth(0), usual) << width;
        scheduler_.kill();
    }
    for (const std::uint32_t width : {0U, 4000U}) {
        ASSERT_TRUE(base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Column0", width));
        ASSERT_TRUE(scheduler_.start());
        EXPECT_EQ(ListDriver(scheduler_.window()).columnWidth(0), static_cast<int>(width));
        scheduler_.kill();
    }
}

TEST_F(ListWidths, TheColumnsFillTheWindowAtFirstAndNeedNoScrolling) {
    startWith({});
    int sum = 0;
    for (int column = 0; column < columns; ++column)
        sum += list().columnWidth(column);
    RECT client{};
    GetClientRect(list().handle(), &client);
    EXPECT_LE(sum, client.right - GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_GE(sum, client.right * 9 / 10);
}

} // namespace
