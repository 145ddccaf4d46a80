// A schedule of a hundred thousand entries. The limits are generous, for slow machines; the times are
// printed.

#include "resources/ids.h"
#include "tests/program/listdriver.h"
#include "tests/program/scheduledriver.h"

#include <commctrl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>

using driver::ListDriver;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

constexpr int crowd = 100000;

/// Entries of every kind, with names and results that a sort has to move.
std::vector<ScheduledProject> manyEntries() {
    std::vector<ScheduledProject> entries(crowd);
    const base::TimeValue now = base::TimeValue::now();
    for (int i = 0; i < crowd; ++i) {
        ScheduledProject& entry = entries[static_cast<std::size_t>(i)];
        const int shuffled = static_cast<int>(static_cast<long long>(i) * 7919 % crowd);
        entry.path = "C:\\Sites\\project " + std::to_string(shuffled) + ".kra";
        entry.kind = static_cast<ScheduleKind>(i % scheduler::kindCount);
        entry.afterIndex = i / 2;
        entry.minutes = i % 60;
        entry.time = now + base::TimeSpan::fromMinutes(60 + i);
        entry.lastRun = now - base::TimeSpan::fromMinutes(i);
        entry.lastResult = i % 3 == 0 ? std::to_string(shuffled) + " pages are missing" : "";
        entry.disabled = 1; // none becomes due, none is asked about at exit
    }
    return entries;
}

void expectWithin(const char* what, std::chrono::seconds limit, const std::function<void()>& act) {
    const auto begin = std::chrono::steady_clock::now();
    act();
    const auto taken = std::chrono::steady_clock::now() - begin;
    std::cout << what << ": " << std::chrono::duration_cast<std::chrono::milliseconds>(taken).count()
              << " ms\n";
    EXPECT_LT(taken, limit) << what;
}

TEST(Crowd, IsShownScrolledSortedToggledAndDeleted) {
    using std::chrono::seconds;
    driver::saveEntries(manyEntries());
    driver::SchedulerProcess scheduler;
    expectWithin("start", seconds(60), [&] {
        ASSERT_TRUE(scheduler.start());
        driver::waitUntil([&] { return ListDriver(scheduler.window()).rowCount() == crowd; });
    });
    const ListDriver list(scheduler.window());
    ASSERT_EQ(list.rowCount(), crowd);

    expectWithin("scroll to the end", seconds(60), [&] {
        SendMessageA(list.handle(), LVM_ENSUREVISIBLE, crowd - 1, FALSE);
        UpdateWindow(list.handle());
        SendMessageA(scheduler.window(), WM_NULL, 0, 0);
    });
    EXPECT_GT(ListView_GetTopIndex(list.handle()), crowd - 200);
    expectWithin("a hundred pages up", seconds(60), [&] {
        for (int page = 0; page < 100; ++page) {
            SendMessageA(list.handle(), WM_VSCROLL, SB_PAGEUP, 0);
            UpdateWindow(list.handle());
        }
    });

    for (int column = 0; column < driver::columns; ++column) {
        expectWithin(("sort by column " + std::to_string(column)).c_str(), seconds(60),
                     [&] { list.clickHeader(column); });
        std::vector<std::string> some;
        for (int row = 0; row < crowd; row += crowd / 20)
            some.push_back(list.cell(row, column));
        EXPECT_TRUE(std::ranges::is_sorted(some)) << column;
    }

    // Under Wine the control tells of every row by itself.
    expectWithin("select all", seconds(60), [&] { list.selectAll(); });
    expectWithin("sort with all selected", seconds(60), [&] { list.clickHeader(0); });
    EXPECT_EQ(ListView_GetSelectedCount(list.handle()), UINT{crowd});
    expectWithin("toggle all", seconds(60),
                 [&] { SendMessageA(scheduler.window(), WM_COMMAND, IDM_ENABLE, 0); });
    expectWithin("toggle all back", seconds(60),
                 [&] { SendMessageA(scheduler.window(), WM_COMMAND, IDM_ENABLE, 0); });

    expectWithin("select every thousandth", seconds(60), [&] {
        std::vector<int> rows;
        for (int row = 0; row < crowd; row += 1000)
            rows.push_back(row);
        list.select(rows);
    });
    expectWithin("sort with some selected", seconds(60), [&] { list.clickHeader(1); });
    EXPECT_EQ(ListView_GetSelectedCount(list.handle()), UINT{crowd / 1000});
    expectWithin("delete these", seconds(60),
                 [&] { SendMessageA(scheduler.window(), WM_COMMAND, IDM_DELETE, 0); });
    EXPECT_EQ(list.rowCount(), crowd - crowd / 1000);

    expectWithin("exit", seconds(60), [&] {
        EXPECT_EQ(driver::SchedulerProcess::runToEnd("/close"), 0U);
        EXPECT_TRUE(scheduler.waitForExit());
    });
    EXPECT_EQ(driver::savedSchedule().size(), static_cast<std::size_t>(crowd - crowd / 1000));
}

} // namespace
