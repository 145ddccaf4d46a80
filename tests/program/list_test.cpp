// The list of the real program: its cells, the order of its rows, the widths of its columns, and its
// painting.

#include "resources/ids.h"
#include "tests/program/programtest.h"
#include "tests/program/witnessdriver.h"

#include <commctrl.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

using driver::columns;
using driver::lastResultColumn;
using driver::nextRunColumn;
using driver::sleeping;
using driver::waitUntil;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

class List : public driver::ProgramTest {};

TEST_F(List, FillsTheClientAreaOfTheWindow) {
    startWith({});
    for (const int width : {400, 700}) {
        SetWindowPos(window(), nullptr, 10, 10, width, 300, SWP_NOZORDER);
        RECT client{};
        GetClientRect(window(), &client);
        RECT place{};
        GetWindowRect(list().handle(), &place);
        MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(EqualRect(&place, &client));
    }
}

TEST_F(List, HasARowOfCellsForEachEntry) {
    std::vector<ScheduledProject> entries(3);
    entries[0] = sleeping("C:\\Sites\\news.daily.kra");
    entries[0].runCommand = RunCommand::RunUpdateOnly;
    entries[0].timeLimitMinutes = 90;
    entries[0].dialupEntry = "Office line";
    entries[0].disconnectWhenDone = 1;
    entries[1] = driver::after(0, "mirror.krb");
    entries[1].minutes = 1;
    entries[1].lastResult = "404 pages are missing";
    entries[2] = sleeping("run:C:\\tools\\copy.exe /x");
    entries[2].disabled = 1;
    startWith(entries);
    EXPECT_THAT(list().headers(),
                ElementsAre("Project", "Schedule", "Parameters", "Next Run", "Last Run", "Last Result"));
    EXPECT_EQ(list().rowCount(), 3);
    EXPECT_THAT(list().rowTexts(0),
                ElementsAre("news.daily", "at startup",
                            "Run update only for up to 90 minutes via Office line; disconnect when done",
                            "next startup", "Never", ""));
    EXPECT_THAT(list().rowTexts(1),
                ElementsAre("mirror", "1 minute after project news.daily is finished", "Run normally",
                            "waiting for news.daily", "Never", "404 pages are missing"));
    EXPECT_THAT(list().rowTexts(2), ElementsAre("run:C:\\tools\\copy.exe /x", "at startup", "Run normally",
                                                "(disabled)", "Never", ""));
}

TEST_F(List, FollowsARunToItsEnd) {
    const driver::SampleSpider spider;
    ScheduledProject run = sleeping(
        spider.makeProject("news.kra", spider.untilReleased() + "result=3 pages are missing\nerror=1\n"));
    run.lastResult = "old";
    startWith({run});
    const driver::WitnessDriver witness(window(), list().handle());
    ASSERT_TRUE(witness.isThere());
    list().select({0});
    driver::WitnessDriver::draw(list().handle());
    LONG paints = witness.paints();
    carryOut(IDM_RUN);
    EXPECT_EQ(list().cell(0, nextRunColumn), "Running");
    EXPECT_EQ(list().cell(0, lastResultColumn), "old");
    EXPECT_TRUE(waitUntil([&] { return witness.paints() > paints; }));
    driver::WitnessDriver::draw(list().handle());
    paints = witness.paints();
    spider.release();
    EXPECT_TRUE(waitUntil([&] { return list().cell(0, lastResultColumn) == "3 pages are missing"; }));
    EXPECT_EQ(list().cell(0, nextRunColumn), "next startup");
    EXPECT_NE(list().cell(0, driver::lastRunColumn), "Never");
    EXPECT_TRUE(waitUntil([&] { return witness.paints() > paints; }));
}

TEST_F(List, ATextLongerThanTheControlsBufferIsCutAndNothingElse) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra")};
    entries[0].lastResult = std::string(5000, 'x') + "end";
    entries[1].lastResult = "short";
    startWith(entries);
    for (const std::size_t size : {std::size_t{2}, std::size_t{100}, std::size_t{260}}) {
        EXPECT_EQ(list().cell(0, lastResultColumn, size), std::string(size - 1, 'x'));
        EXPECT_EQ(list().cell(1, lastResultColumn, size), std::string("short").substr(0, size - 1));
    }
    // The control's own buffer may limit it beyond that; the entry itself stays whole.
    const std::string whole = list().cell(0, lastResultColumn, 8000);
    EXPECT_GE(whole.size(), 259U);
    EXPECT_THAT(entries[0].lastResult, StartsWith(whole));
    ASSERT_NO_FATAL_FAILURE(close());
    EXPECT_EQ(driver::savedSchedule()[0].lastResult, entries[0].lastResult);
}

TEST_F(List, AClickOnAHeaderSortsByItsTextsAndASecondOneReverses) {
    std::vector<ScheduledProject> entries = {sleeping("b.kra"), sleeping("C.kra"), sleeping("a.kra"),
                                             sleeping("B.kra")};
    entries[0].lastResult = "10";
    entries[1].lastResult = "9";
    entries[2].kind = ScheduleKind::Once; // "(never)"
    entries[3].disabled = 1;
    entries[2].runCommand = RunCommand::RelinkFiles;
    entries[1].lastRun = base::TimeValue::now() - base::TimeSpan::fromDays(100);
    startWith(entries);
    for (int column = 0; column < columns; ++column) {
        list().select({0, 2});
        const auto selected = [this] {
            std::vector<std::string> names;
            for (const int row : list().selectedRows())
                names.push_back(list().cell(row, 0));
            std::ranges::sort(names);
            return names;
        };
        const std::vector<std::string> before = selected();
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
            EXPECT_EQ(selected(), before) << column;
        }
    }
    list().clickHeader(0);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("B", "C", "a", "b")) << "capitals come first";
}

TEST_F(List, ASortedListDeletesTheEntryOfTheRowAndLeavesTheOrderOfTheSchedule) {
    startWith({sleeping("c.kra"), sleeping("a.kra"), sleeping("b.kra")});
    list().select({0});
    list().clickHeader(0);
    EXPECT_THAT(list().selectedRows(), ElementsAre(2));
    EXPECT_EQ(list().focusedRow(), 2) << "the keyboard stays on its entry";
    list().select({1}); // b
    carryOut(IDM_DELETE);
    EXPECT_THAT(list().columnTexts(0), ElementsAre("a", "c"));
    EXPECT_TRUE(list().selectedRows().empty());
    EXPECT_EQ(list().focusedRow(), 1);
    restart();
    EXPECT_THAT(list().columnTexts(0), ElementsAre("c", "a"));
}

TEST_F(List, ColumnWidthsComeBackAsTheyWereLeft) {
    startWith({});
    for (int column = 0; column < columns; ++column)
        list().setColumnWidth(column, 40 + 10 * column);
    restart();
    for (int column = 0; column < columns; ++column)
        EXPECT_EQ(list().columnWidth(column), 40 + 10 * column);
}

TEST_F(List, AColumnWidthOutOfRangeIsIgnored) {
    startWith({});
    const int usual = list().columnWidth(0);
    EXPECT_GT(usual, 20);
    struct Case {
        std::uint32_t saved;
        int shown;
    };
    for (const Case& width : {Case{0, 0}, {4000, 4000}, {4001, usual}, {0x80000000, usual}}) {
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Column0", width.saved);
        startWith({});
        EXPECT_EQ(list().columnWidth(0), width.shown);
    }
}

} // namespace
