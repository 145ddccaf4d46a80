// The list of the real program: what its cells say, and when it paints.

#include "lib/base/stackalignment.h"
#include "resources/ids.h"
#include "scheduler/model/descriptions.h"
#include "tests/program/listtest.h"
#include "tests/program/witnessdriver.h"

#include <gmock/gmock.h>

using base::TimeSpan;
using base::TimeValue;
using driver::lastResultColumn;
using driver::lastRunColumn;
using driver::nextRunColumn;
using driver::sleeping;
using driver::waitUntil;
using driver::WitnessDriver;
using scheduler::RunCommand;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

class List : public driver::ListTest {};

ScheduledProject entry(const std::string& path, ScheduleKind kind) {
    ScheduledProject made;
    made.path = path;
    made.kind = kind;
    return made;
}

TEST_F(List, ShowsItsColumnsAndNoRowsForAnEmptySchedule) {
    startWith({});
    EXPECT_THAT(list().headers(),
                ElementsAre("Project", "Schedule", "Parameters", "Next Run", "Last Run", "Last Result"));
    EXPECT_EQ(list().rowCount(), 0);
}

TEST_F(List, FillsTheClientAreaOfTheWindow) {
    startWith({});
    for (const int width : {400, 700}) {
        SetWindowPos(scheduler_.window(), nullptr, 10, 10, width, 300, SWP_NOZORDER);
        RECT client{};
        GetClientRect(scheduler_.window(), &client);
        RECT place{};
        GetWindowRect(list().handle(), &place);
        MapWindowPoints(nullptr, scheduler_.window(), reinterpret_cast<POINT*>(&place), 2);
        EXPECT_TRUE(EqualRect(&place, &client));
    }
}

TEST_F(List, CellsOfEveryKindSayWhatTheDescriptionsSay) {
    const TimeValue now = TimeValue::now();
    std::vector<ScheduledProject> entries;
    entries.push_back(entry("C:\\Sites\\news.daily.kra", ScheduleKind::Daily));
    entries.back().time = now + TimeSpan::fromDays(-3);
    entries.back().runCommand = RunCommand::RunUpdateOnly;
    entries.back().timeLimitMinutes = 90;
    entries.back().dialupEntry = "Office line";
    entries.back().disconnectWhenDone = 1;
    entries.push_back(entry("mirror.krb", ScheduleKind::AfterProject));
    entries.back().minutes = 1;
    entries.push_back(entry("C:/Sites/hours.krc", ScheduleKind::Hourly));
    entries.back().minutes = 59;
    entries.push_back(entry("run:C:\\tools\\copy.exe /x", ScheduleKind::Monthly));
    entries.back().dayOfMonth = 31;
    entries.back().time = now;
    entries.push_back(entry("C:\\Sites\\once.kra", ScheduleKind::Once));
    entries.back().time = now + TimeSpan::fromDays(1);
    entries.push_back(entry("C:\\Sites\\past.kra", ScheduleKind::Once));
    entries.back().time = now + TimeSpan::fromDays(-1);
    entries.back().lastRun = now + TimeSpan::fromDays(-40);
    entries.back().lastResult = "404 pages are missing";
    entries.push_back(entry("C:\\Sites\\boot.kra", ScheduleKind::AtStartup));
    entries.push_back(entry("C:\\Sites\\off.kra", ScheduleKind::AtStartup));
    entries.back().disabled = 1;
    entries.back().runCommand = RunCommand::RelinkFiles;
    startWith(entries);

    EXPECT_THAT(list().columnTexts(0),
                ElementsAre("news.daily", "mirror", "hours", "run:C:\\tools\\copy.exe /x", "once", "past",
                            "boot", "off"));
    scheduler::ScheduleList schedule;
    schedule.assign(entries);
    ASSERT_EQ(list().rowCount(), static_cast<int>(entries.size()));
    for (int row = 0; row < list().rowCount(); ++row) {
        const ScheduledProject& shown = entries[static_cast<std::size_t>(row)];
        EXPECT_EQ(list().cell(row, 1), scheduler::describeSchedule(shown, schedule));
        EXPECT_EQ(list().cell(row, 2), scheduler::describeRun(shown));
        EXPECT_EQ(list().cell(row, lastRunColumn), scheduler::describeLastRun(shown, TimeValue::now()));
        EXPECT_EQ(list().cell(row, lastResultColumn), shown.lastResult);
    }
    EXPECT_EQ(list().cell(0, 2),
              "Run update only for up to 90 minutes via Office line; disconnect when done");
    EXPECT_EQ(list().cell(1, nextRunColumn), "waiting for news.daily");
    EXPECT_EQ(list().cell(4, nextRunColumn).find("tomorrow at "), 0U);
    EXPECT_EQ(list().cell(5, nextRunColumn), "(never)");
    EXPECT_EQ(list().cell(6, nextRunColumn), "next startup");
    EXPECT_EQ(list().cell(7, nextRunColumn), "(disabled)");
    EXPECT_EQ(list().cell(7, 2), "Relink files");
    EXPECT_EQ(list().cell(7, lastRunColumn), "Never");
}

TEST_F(List, SuspensionShowsInEveryRowThatIsNotDisabled) {
    std::vector<ScheduledProject> entries = {sleeping("a.kra"), sleeping("b.kra")};
    entries[1].disabled = 1;
    startWith(entries);
    SendMessageA(scheduler_.window(), WM_COMMAND, IDM_SUSPEND, 0);
    EXPECT_THAT(list().columnTexts(nextRunColumn), ElementsAre("(suspended)", "(disabled)"));
    SendMessageA(scheduler_.window(), WM_COMMAND, IDM_SUSPEND, 0);
    EXPECT_THAT(list().columnTexts(nextRunColumn), ElementsAre("next startup", "(disabled)"));
}

TEST_F(List, FollowsARunToItsEnd) {
    const driver::SampleSpider spider;
    ScheduledProject run =
        sleeping(spider.makeProject("news.kra", "seconds=2\nresult=3 pages are missing\nerror=1\n"));
    run.lastResult = "old";
    startWith({run});
    const WitnessDriver witness(scheduler_.window(), list().handle());
    ASSERT_TRUE(witness.isThere());
    list().select({0});
    scheduler_.command(IDM_RUN);
    EXPECT_TRUE(waitUntil([&] { return list().cell(0, nextRunColumn) == "Running"; }));
    EXPECT_TRUE(waitUntil([&] { return list().cell(0, lastResultColumn) == "3 pages are missing"; }));
    EXPECT_EQ(list().cell(0, lastRunColumn).find("today at "), 0U);
    EXPECT_EQ(list().cell(0, nextRunColumn), "next startup");
    EXPECT_GE(witness.paints(), 2);
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

CALLED_BY_PLATFORM BOOL CALLBACK findHint(HWND window, LPARAM found) {
    constexpr LONG hintStyles = WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
    if ((GetWindowLongA(window, GWL_EXSTYLE) & hintStyles) != hintStyles || !IsWindowVisible(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

TEST_F(List, ACutCellIsShownWholeWhereTheMouseRestsUntilTheListMoves) {
    std::vector<ScheduledProject> entries(2, sleeping("a.kra"));
    entries[1].lastResult = std::string(90, 'x');
    startWith(entries);
    const auto hint = [&] {
        HWND found = nullptr;
        EnumThreadWindows(GetWindowThreadProcessId(scheduler_.window(), nullptr), &findHint,
                          reinterpret_cast<LPARAM>(&found));
        return found;
    };
    const auto restAt = [&](POINT place) {
        // The platform's own pointer may stand there already, and would then not have moved.
        SetCursorPos(place.x + 3, place.y);
        SetCursorPos(place.x, place.y);
    };
    restAt(list().cellPlace(1, lastResultColumn));
    ASSERT_TRUE(waitUntil([&] { return hint() != nullptr; }));
    RECT shown{};
    GetWindowRect(hint(), &shown);
    EXPECT_GT(shown.right - shown.left, list().columnWidth(lastResultColumn));
    list().pressKey(VK_DOWN);
    EXPECT_TRUE(waitUntil([&] { return hint() == nullptr; }));
}

} // namespace
