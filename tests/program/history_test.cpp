// Tests the history file that the real program writes.

#include "lib/base/opsys.h"
#include "resources/ids.h"
#include "tests/program/programtest.h"
#include "tests/program/settableclock.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <ctime>
#include <iomanip>
#include <sstream>

using base::TimeSpan;
using base::TimeValue;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;
using testing::ElementsAre;

namespace {

using Cells = std::vector<std::string>;

class History : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        DeleteFileA(path_.c_str());
    }

    std::vector<Cells> rows() const {
        std::vector<Cells> rows;
        std::istringstream content(driver::readBytes(path_));
        for (std::string line; std::getline(content, line);) {
            EXPECT_TRUE(line.ends_with('\r')) << line;
            line.pop_back();
            std::istringstream text(line + '\t'); // so that an empty last cell is read, too
            rows.emplace_back();
            for (std::string cell; std::getline(text, cell, '\t');)
                rows.back().push_back(cell);
        }
        return rows;
    }

    void waitForRows(std::size_t count) const {
        ASSERT_TRUE(waitUntil([&] {
            scheduler_.tick();
            return rows().size() >= count;
        })) << "there are only "
            << rows().size();
    }

    /// The time in a cell; 0 if the cell is not in the history's time format.
    static std::time_t timeOf(const std::string& cell) {
        std::tm fields{};
        std::istringstream text(cell);
        text >> std::get_time(&fields, "%Y-%m-%d %H:%M:%S");
        fields.tm_isdst = -1;
        return text.fail() || cell.size() != 19 ? 0 : std::mktime(&fields);
    }

    driver::SettableClock clock_;
    driver::SampleSpider spider_;

private:
    const std::string path_ =
        std::getenv("LOCALAPPDATA") + std::string("\\Brindlewood\\Corvane Scheduler\\history.txt");
};

TEST_F(History, RecordsEachRunAndTheStatesOfTheProgram) {
    const TimeValue due = TimeValue::now() + TimeSpan::fromMinutes(60);
    ScheduledProject news = driver::sleeping(spider_.makeProject("news.kra"));
    news.kind = ScheduleKind::Once;
    news.time = due;
    const ScheduledProject shop =
        driver::after(0, spider_.makeProject("shop.krb", "result=3 pages are missing\n"));
    const ScheduledProject missing = driver::sleeping("run:" + spider_.folder() + "missing.exe /all");
    ASSERT_NO_FATAL_FAILURE(startWith({news, shop, missing}));
    clock_.moveTo(due);
    ASSERT_NO_FATAL_FAILURE(waitForRows(4));
    list().select({2});
    carryOut(IDM_RUN);
    ASSERT_NO_FATAL_FAILURE(waitForRows(5));
    carryOut(IDM_SUSPEND);
    carryOut(IDM_SUSPEND);
    const TimeValue lastRun = driver::savedSchedule().at(0).lastRun;
    ASSERT_TRUE(scheduler_.exit());

    const std::vector<Cells> table = rows();
    ASSERT_EQ(table.size(), 8U);
    EXPECT_THAT(table[0], ElementsAre("Start", "End", "Seconds", "Project", "Cause", "Outcome", "Path"));
    const std::vector<Cells> expected = {
        {"Corvane Scheduler", "", "started", driver::buildFolder() + "scheduler.exe"},
        {"news", "schedule", "ok", news.path},
        {"shop", "after news", "3 pages are missing", shop.path},
        {missing.path, "by hand", "could not be started: File not found", missing.path},
        {"Corvane Scheduler", "", "suspended", ""},
        {"Corvane Scheduler", "", "resumed", ""},
        {"Corvane Scheduler", "", "exited", ""}};
    for (std::size_t row = 1; row < table.size(); ++row) {
        const Cells& cells = table[row];
        EXPECT_EQ(Cells(cells.begin() + 3, cells.end()), expected[row - 1]);
        EXPECT_NE(timeOf(cells[0]), 0) << cells[0];
        EXPECT_EQ(std::to_string(timeOf(cells[1]) - timeOf(cells[0])), cells[2]);
    }
    EXPECT_EQ(timeOf(table[2][0]), lastRun.seconds());
    EXPECT_EQ(driver::savedSchedule().at(2).lastResult, "") << "the list does not show the reason";
}

} // namespace
