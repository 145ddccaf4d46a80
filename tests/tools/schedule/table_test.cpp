#include "tools/schedule/table.h"

#include <gtest/gtest.h>

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

    scheduler::ScheduleList list;
};

TEST_F(TableTest, AnEmptyScheduleIsItsHeadings) {
    EXPECT_EQ(scheduleTable(list, now), "Project  When  Last Run  Last Result  Next Run\n");
}

TEST_F(TableTest, ColumnsAreTwoBlanksWiderThanTheirLongestCellAndNoLineEndsInBlanks) {
    add("C:\\a much longer name.kra").lastResult = "2 pages could not be found";
    add("C:\\b.kra").disabled = 1;
    EXPECT_EQ(scheduleTable(list, now),
              "Project             When                                Last Run  Last Result                 "
              "Next Run\n"
              "a much longer name  when project (unknown) is finished  Never     2 pages could not be found  "
              "waiting for (unknown)\n"
              "b                   when project (unknown) is finished  Never                                 "
              "(disabled)\n");
}

} // namespace
