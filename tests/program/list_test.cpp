#include "resources/ids.h"
#include "tests/program/programtest.h"

#include <commctrl.h>

#include <gmock/gmock.h>

using driver::columns;
using driver::lastResultColumn;
using driver::nextRunColumn;
using driver::sleeping;
using scheduler::ScheduledProject;
using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

class List : public driver::ProgramTest {};

TEST_F(List, HasARowForEachEntry) {
    startWith({sleeping("C:\\Sites\\news.daily.kra"), driver::after(0, "mirror.krb")});
    EXPECT_EQ(list().headers().size(), std::size_t{columns});
    EXPECT_EQ(list().headers()[0], "Project");
    EXPECT_EQ(list().rowCount(), 2);
    EXPECT_THAT(list().rowTexts(0),
                ElementsAre("news.daily", "at startup", "Run normally", "next startup", "Never", ""));
    EXPECT_EQ(list().cell(1, nextRunColumn), "waiting for news.daily");
}

TEST_F(List, ATextLongerThanTheControlsBufferIsTruncatedOnlyThere) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra")};
    entries[0].lastResult = std::string(5000, 'x') + "end";
    entries[1].lastResult = "short";
    startWith(entries);
    for (const std::size_t size : {std::size_t{2}, std::size_t{100}, std::size_t{260}}) {
        EXPECT_EQ(list().cell(0, lastResultColumn, size), std::string(size - 1, 'x'));
        EXPECT_EQ(list().cell(1, lastResultColumn, size), std::string("short").substr(0, size - 1));
    }
    // The control's own buffer may be shorter; the entry keeps its whole text.
    const std::string whole = list().cell(0, lastResultColumn, 8000);
    EXPECT_GE(whole.size(), 259U);
    EXPECT_THAT(entries[0].lastResult, StartsWith(whole));
    ASSERT_NO_FATAL_FAILURE(close());
    EXPECT_EQ(driver::savedSchedule()[0].lastResult, entries[0].lastResult);
}

TEST_F(List, AnArrowShowsTheSortedColumnAndItsDirection) {
    startWith({sleeping("b.kra"), sleeping("a.kra")});
    for (int column = 0; column < columns; ++column)
        for (const int arrow : {HDF_SORTUP, HDF_SORTDOWN}) {
            list().clickHeader(column);
            for (int other = 0; other < columns; ++other)
                EXPECT_EQ(list().sortArrow(other), other == column ? arrow : 0);
        }
}

TEST_F(List, ASortedListDeletesTheRowsEntryAndKeepsTheScheduleOrder) {
    startWith({sleeping("c.kra"), sleeping("a.kra"), sleeping("b.kra")});
    list().select({0});
    list().clickHeader(0);
    EXPECT_THAT(list().selectedRows(), ElementsAre(2));
    EXPECT_EQ(list().focusedRow(), 2) << "the focus stays on its entry";
    list().select({1}); // b
    carryOut(IDM_DELETE);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "c"));
    EXPECT_TRUE(list().selectedRows().empty());
    EXPECT_EQ(list().focusedRow(), 1);
    restart();
    EXPECT_THAT(list().columnTexts(0), ElementsAre("c", "a"));
}

TEST_F(List, ColumnWidthsAreRestored) {
    startWith({});
    for (int column = 0; column < columns; ++column)
        list().setColumnWidth(column, 40 + 10 * column);
    restart();
    for (int column = 0; column < columns; ++column)
        EXPECT_EQ(list().columnWidth(column), 40 + 10 * column);
}

} // namespace
