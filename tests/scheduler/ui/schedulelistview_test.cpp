#include "scheduler/ui/schedulelistview.h"
#include "tests/scheduler/ui/listwindow.h"
#include "tests/scheduler/ui/redrawnrows.h"
#include "tests/support/allocations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

namespace {

using scheduler::ScheduleColumn;
using testing::Contains;
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

TEST_F(ScheduleListView, WhereTimeChangesNoTextItMakesNone) {
    for (int i = 0; i < 200; ++i)
        window_.add("more");
    RECT row{};
    ListView_GetItemRect(window_.list.handle(), 0, &row, LVIR_BOUNDS);
    // Whether the lowest row is cut off by the window's edge, hidden behind it or shown whole.
    for (int height = 150; height <= 150 + row.bottom - row.top; ++height) {
        window_.list.moveTo({0, 0, 640, height});
        UpdateWindow(window_.list.handle());
        window_.list.onTimePassed();
        window_.stateQueries = 0;
        window_.list.onTimePassed();
        EXPECT_EQ(window_.stateQueries, 1) << "the clock alone, at a height of " << height;
    }
    window_.clock.advance(base::TimeSpan::fromMinutes(15));
    window_.list.onTimePassed();
    EXPECT_GT(window_.stateQueries, 10) << "they may have changed";
}

TEST_F(ScheduleListView, WhatCannotBePaintedNowIsMadeOnce) {
    for (scheduler::ScheduledProject& entry : window_.schedule)
        entry.lastRun = window_.clock.now();
    window_.list.refresh();
    ShowWindow(window_.handle(), SW_HIDE);
    window_.clock.advance(base::TimeSpan::fromDays(2)); // today, and then not any more
    window_.list.onTimePassed();
    window_.stateQueries = 0;
    window_.list.onTimePassed();
    EXPECT_EQ(window_.stateQueries, 1) << "the clock alone";
    ShowWindow(window_.handle(), SW_SHOW);
    UpdateWindow(window_.list.handle());
    EXPECT_GT(window_.stateQueries, 1);
}

TEST_F(ScheduleListView, RowsThatAreGoneAreNotLookedAt) {
    window_.schedule.removeAll({2, 1});
    window_.list.refresh();
    UpdateWindow(window_.list.handle());
    window_.clock.advance(base::TimeSpan::fromDays(2));
    window_.list.onTimePassed();
    window_.stateQueries = 0;
    window_.list.onTimePassed();
    EXPECT_EQ(window_.stateQueries, 1) << "the clock alone";
}

TEST_F(ScheduleListView, AfterADeletionItScrollsAndPaintsWhatIsLeft) {
    for (int i = 0; i < 200; ++i)
        window_.add("more");
    const HWND list = window_.list.handle();
    const auto canScroll = [&] { return (GetWindowLongA(list, GWL_STYLE) & WS_VSCROLL) != 0; };
    ListView_EnsureVisible(list, 202, FALSE);
    ASSERT_TRUE(canScroll());
    ASSERT_GT(ListView_GetTopIndex(list), 0);
    ListView_SetItemState(list, 202, LVIS_FOCUSED, LVIS_FOCUSED);
    std::vector<std::size_t> allButThree;
    for (std::size_t position = 203; position-- > 3;) {
        allButThree.push_back(position);
        window_.select(static_cast<int>(position));
    }
    window_.schedule.removeAll(allButThree);
    window_.list.onRowsDeleted();
    EXPECT_FALSE(canScroll());
    EXPECT_EQ(ListView_GetTopIndex(list), 0);
    EXPECT_EQ(ListView_GetItemCount(list), 3);
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_FOCUSED), 2);
    EXPECT_FALSE(GetUpdateRect(list, nullptr, FALSE)) << "all is painted";
    // It paints again on its own account, too.
    window_.select(1);
    EXPECT_TRUE(GetUpdateRect(list, nullptr, FALSE));
}

TEST_F(ScheduleListView, AfterADeletionTheKeyboardIsWhereTheFirstOfThemWas) {
    for (int i = 0; i < 17; ++i)
        window_.add("more");
    const HWND list = window_.list.handle();
    for (int row = 5; row <= 9; ++row)
        window_.select(row);
    ListView_SetItemState(list, 9, LVIS_FOCUSED, LVIS_FOCUSED); // as Shift and the arrow down leave it
    window_.schedule.removeAll({9, 8, 7, 6, 5});
    window_.list.onRowsDeleted();
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_FOCUSED), 5);
    EXPECT_THAT(window_.list.selectedEntries(), IsEmpty());
}

TEST_F(ScheduleListView, WhatCannotBeShownForLackOfMemoryIsShownOnceThereIsSome) {
    window_.list.refresh();
    window_.schedule[1].lastResult = "a text that lies outside its string";
    {
        const test::RefusedAllocations refused;
        window_.list.refresh();
    }
    test::RedrawnRows redrawn(window_.list);
    window_.list.refresh();
    EXPECT_THAT(redrawn.rows, Contains(1U)) << "and others whose texts could not be had";
    redrawn.rows.clear();
    window_.list.refresh();
    EXPECT_THAT(redrawn.rows, IsEmpty()) << "all is shown now";
}

} // namespace
