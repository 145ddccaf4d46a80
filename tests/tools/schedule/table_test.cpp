#include "scheduler/model/descriptions.h"
#include "tools/schedule/table.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace {

const base::TimeValue now(1'781'500'000);

class TableTest : public testing::Test {
protected:
    scheduler::ScheduledProject& add(const std::string& path) {
        scheduler::ScheduledProject entry;
        entry.path = path;
        entry.afterIndex = -1;
        entry.nextRun = base::TimeValue::never();
        list.append(std::move(entry));
        return list[list.size() - 1];
    }
    std::vector<std::string> lines() const {
        std::istringstream text(scheduleTable(list, now));
        std::vector<std::string> result;
        for (std::string line; std::getline(text, line);)
            result.push_back(line);
        return result;
    }

    scheduler::ScheduleList list;
};

TEST_F(TableTest, AnEmptyScheduleIsItsHeadings) {
    EXPECT_EQ(scheduleTable(list, now), "Project  When  Last Run  Last Result  Next Run\n");
}

TEST_F(TableTest, ColumnsAreTwoBlanksWiderThanTheirLongestCell) {
    add("C:\\a much longer name.kra").lastResult = "2 pages could not be found";
    add("C:\\b.kra");
    const auto shown = lines();
    ASSERT_EQ(shown.size(), 3u);
    const std::size_t when = std::string("a much longer name  ").size();
    EXPECT_EQ(shown[0].find("When"), when);
    EXPECT_EQ(shown[1].find(scheduler::describeSchedule(list[0], list)), when);
    EXPECT_EQ(shown[2].substr(0, when), "b" + std::string(when - 1, ' '));

    const std::size_t lastRun = when + scheduler::describeSchedule(list[0], list).size() + 2;
    const std::size_t lastResult = lastRun + std::string("Last Run  ").size();
    const std::size_t nextRun = lastResult + list[0].lastResult.size() + 2;
    for (const std::string& line : {shown[1], shown[2]}) {
        EXPECT_EQ(line.substr(lastRun, 10), "Never     ") << "the heading is the longest cell";
        EXPECT_EQ(line.substr(nextRun),
                  describeNextRun(list[0], list, scheduler::EngineState(), base::systemClock()));
    }
    EXPECT_EQ(shown[1].substr(lastResult, list[0].lastResult.size()), list[0].lastResult);
    EXPECT_EQ(shown[0].find("Next Run"), nextRun);
}

TEST_F(TableTest, NoLineEndsInBlanks) {
    add("C:\\a.kra").nextRun = base::TimeValue(1);
    add("C:\\b.kra").disabled = 1;
    add("C:\\c.kra");
    for (const std::string& line : lines())
        EXPECT_FALSE(line.ends_with(' ')) << '"' << line << '"';
}

} // namespace
