#include "resources/ids.h"
#include "tests/program/programtest.h"
#include "tests/program/spydriver.h"
#include "tests/support/clipboardtext.h"
#include "tests/support/schedulekinds.h"

#include <commctrl.h>

#include <algorithm>
#include <chrono>

using scheduler::ScheduledProject;

namespace {

constexpr int entryCount = 100000;

// Character codes for WM_CHAR.
constexpr WPARAM ctrlA = 1;
constexpr WPARAM ctrlC = 3;

std::vector<ScheduledProject> makeEntries(int count) {
    std::vector<ScheduledProject> entries;
    const base::TimeValue now = base::TimeValue::now();
    for (int i = 0; i < count; ++i) {
        ScheduledProject entry;
        const int shuffled = static_cast<int>(static_cast<long long>(i) * 7919 % entryCount);
        entry.path = "C:\\Sites\\project " + std::to_string(shuffled) + ".kra";
        entry.kind = test::allKinds[static_cast<std::size_t>(i) % test::allKinds.size()];
        entry.afterIndex = i / 2;
        entry.minutes = i % 60;
        entry.time = now + base::TimeSpan::fromSeconds(3600 + i);
        entry.lastRun = now - base::TimeSpan::fromSeconds(i);
        entry.lastResult = i % 3 == 0 ? std::to_string(shuffled) + " pages are missing" : "";
        entry.disabled = 1; // never due, and Exit asks nothing
        entries.push_back(entry);
    }
    return entries;
}

class LargeSchedule : public driver::ProgramTest {
protected:
    void sortBy(int column) const { list().clickHeader(column); }

    /// The time to page up and paint: the shortest of 150 measurements, because a start slows the machine for
    /// seconds. Ten rows fit into a page, so they do not move.
    std::chrono::nanoseconds scrollingTime(int rows) {
        using Clock = std::chrono::steady_clock;
        startWith(makeEntries(rows));
        const driver::SpyDriver spy(window());
        EXPECT_TRUE(spy.isLoaded());
        SetWindowPos(window(), nullptr, 0, 0, 700, 250, SWP_NOMOVE | SWP_NOZORDER);
        SendMessageA(list().handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(rows - 1), FALSE);
        auto least = std::chrono::nanoseconds::max();
        for (int page = 0; page < 150; ++page) {
            const auto begin = Clock::now();
            SendMessageA(list().handle(), WM_VSCROLL, SB_PAGEUP, 0);
            driver::SpyDriver::draw(list().handle());
            least = std::min<std::chrono::nanoseconds>(least, Clock::now() - begin);
        }
        return least;
    }
};

class Scrolling : public LargeSchedule {};

TEST_F(Scrolling, IsAsFastAsWithTenRows) {
    const auto few = scrollingTime(10);
    const auto many = scrollingTime(entryCount);
    EXPECT_GT(ListView_GetTopIndex(list().handle()), entryCount / 2) << "not yet at the top";
    EXPECT_LT(many, 4 * few);
}

TEST_F(LargeSchedule, CanBeSortedCopiedToggledDeletedFromAndSaved) {
    startWith(makeEntries(entryCount));
    ASSERT_EQ(list().rowCount(), entryCount);
    for (int column = 0; column < driver::columns; ++column) {
        sortBy(column);
        std::vector<std::string> some;
        for (int row = 0; row < entryCount; row += entryCount / 20)
            some.push_back(list().cell(row, column));
        EXPECT_TRUE(std::ranges::is_sorted(some)) << column;
    }
    SendMessageA(list().handle(), WM_CHAR, ctrlA, 1);
    SendMessageA(list().handle(), WM_CHAR, ctrlC, 1);
    EXPECT_EQ(std::ranges::count(test::clipboardText(), L'\n'), entryCount);
    sortBy(0);
    EXPECT_EQ(ListView_GetSelectedCount(list().handle()), UINT{entryCount});
    carryOut(IDM_ENABLE);
    EXPECT_NE(list().cell(0, driver::nextRunColumn), "(disabled)");
    carryOut(IDM_ENABLE);
    EXPECT_EQ(list().cell(0, driver::nextRunColumn), "(disabled)");

    std::vector<int> rows;
    for (int row = 0; row < entryCount; row += 1000)
        rows.push_back(row);
    list().select(rows);
    sortBy(1);
    EXPECT_EQ(ListView_GetSelectedCount(list().handle()), rows.size());
    carryOut(IDM_DELETE);
    EXPECT_EQ(list().rowCount(), entryCount - static_cast<int>(rows.size()));
    ASSERT_NO_FATAL_FAILURE(close());
    EXPECT_EQ(driver::savedSchedule().size(), entryCount - rows.size());
}

} // namespace
