#include "tools/schedule/table.h"

#include <gtest/gtest.h>

namespace {

const base::TimeValue now(1'781'500'000);

TEST(ScheduleTable, EmptyScheduleShowsOnlyTheHeadings) {
    EXPECT_EQ(scheduleTable(scheduler::ScheduleList(), now),
              "Project  When  Last Run  Last Result  Next Run\n");
}

TEST(ScheduleTable, ColumnsAreTwoSpacesWiderThanTheirLongestCellWithoutTrailingSpaces) {
    scheduler::ScheduledProject entry;
    entry.afterIndex = -1;
    entry.nextRun = base::TimeValue::never();
    scheduler::ScheduleList list;
    list.assign({entry, entry});
    list[0].path = "C:\\a much longer name.kra";
    list[0].lastResult = "2 pages could not be found";
    list[1].path = "C:\\b.kra";
    list[1].disabled = 1;
    EXPECT_EQ(scheduleTable(list, now),
              "Project             When                                Last Run  Last Result                 "
              "Next Run\n"
              "a much longer name  when project (unknown) is finished  Never     2 pages could not be found  "
              "waiting for (unknown)\n"
              "b                   when project (unknown) is finished  Never                                 "
              "(disabled)\n");
}

} // namespace
