#include "scheduler/ui/schedulelistview.h"
#include "tests/scheduler/ui/listwindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using scheduler::ScheduleColumn;
using testing::ElementsAre;
using testing::IsEmpty;

class ScheduleListView : public testing::Test {
protected:
    ScheduleListView() {
        for (const char* const name : {"b", "c", "a"})
            window_.add(name);
    }

    test::ListWindow window_;
};

TEST_F(ScheduleListView, TheFirstSelectedEntryIsThatOfTheTopmostSelectedRow) {
    EXPECT_EQ(window_.list.firstSelectedEntry(), std::nullopt);
    window_.select(2);
    EXPECT_EQ(window_.list.firstSelectedEntry(), 2U);
    window_.select(1);
    EXPECT_EQ(window_.list.firstSelectedEntry(), 1U) << "whichever was selected first";
    window_.clickHeader(ScheduleColumn::Project); // a, b, c; of these a and c are selected
    EXPECT_EQ(window_.list.firstSelectedEntry(), 2U) << "the entry in the row, not the row";
    window_.clickHeader(ScheduleColumn::Project);
    EXPECT_EQ(window_.list.firstSelectedEntry(), 1U);
}

TEST_F(ScheduleListView, TheSelectedEntriesAscendWhateverTheOrderOfTheRows) {
    EXPECT_THAT(window_.list.selectedEntries(), IsEmpty());
    window_.clickHeader(ScheduleColumn::Project);
    window_.select(0);
    window_.select(1);
    EXPECT_THAT(window_.list.selectedEntries(), ElementsAre(0, 2));
}

} // namespace
