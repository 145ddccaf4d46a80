#include "resources/ids.h"
#include "tests/program/programtest.h"
#include "tests/program/witnessdriver.h"
#include "tests/support/clipboardtext.h"
#include "tests/support/schedulekinds.h"

#include <commctrl.h>

#include <algorithm>
#include <chrono>

using scheduler::ScheduledProject;

namespace {

constexpr int crowd = 100000;

// As WM_CHAR tells of them.
constexpr WPARAM ctrlA = 1;
constexpr WPARAM ctrlC = 3;

std::vector<ScheduledProject> makeEntries(int count) {
    std::vector<ScheduledProject> entries;
    const base::TimeValue now = base::TimeValue::now();
    for (int i = 0; i < count; ++i) {
        ScheduledProject entry;
        const int shuffled = static_cast<int>(static_cast<long long>(i) * 7919 % crowd);
        entry.path = "C:\\Sites\\project " + std::to_string(shuffled) + ".kra";
        entry.kind = test::allKinds[static_cast<std::size_t>(i) % test::allKinds.size()];
        entry.afterIndex = i / 2;
        entry.minutes = i % 60;
        entry.time = now + base::TimeSpan::fromSeconds(3600 + i);
        entry.lastRun = now - base::TimeSpan::fromSeconds(i);
        entry.lastResult = i % 3 == 0 ? std::to_string(shuffled) + " pages are missing" : "";
        entry.disabled = 1; // none becomes due, none is asked about at exit
        entries.push_back(entry);
    }
    return entries;
}

class Crowd : public driver::ProgramTest {
protected:
    void sortBy(int column) const { list().clickHeader(column); }

    /// The shortest of ten times: the list scrolls up three pages from its end and paints each.
    std::chrono::nanoseconds scrollingTime(int rows) {
        using Clock = std::chrono::steady_clock;
        startWith(makeEntries(rows));
        const driver::WitnessDriver witness(window());
        EXPECT_TRUE(witness.isThere());
        SetWindowPos(window(), nullptr, 0, 0, 700, 250, SWP_NOMOVE | SWP_NOZORDER);
        SendMessageA(list().handle(), LVM_ENSUREVISIBLE, static_cast<WPARAM>(rows - 1), FALSE);
        auto least = std::chrono::nanoseconds::max();
        for (int round = 0; round < 4; ++round) {
            const auto begin = Clock::now();
            for (int page = 0; page < 3; ++page) {
                SendMessageA(list().handle(), WM_VSCROLL, SB_PAGEUP, 0);
                driver::WitnessDriver::draw(list().handle());
            }
            least = std::min<std::chrono::nanoseconds>(least, Clock::now() - begin);
        }
        return least;
    }
};

TEST_F(Crowd, ScrollsAsFastAsTenRows) {
    const auto few = scrollingTime(10);
    const auto many = scrollingTime(crowd);
    EXPECT_GT(ListView_GetTopIndex(list().handle()), crowd / 2) << "not yet at the top";
    EXPECT_LT(many, 4 * few);
}

TEST_F(Crowd, IsSortedToggledDeletedFromAndSaved) {
    startWith(makeEntries(crowd));
    ASSERT_EQ(list().rowCount(), crowd);
    for (int column = 0; column < driver::columns; ++column) {
        sortBy(column);
        std::vector<std::string> some;
        for (int row = 0; row < crowd; row += crowd / 20)
            some.push_back(list().cell(row, column));
        EXPECT_TRUE(std::ranges::is_sorted(some)) << column;
    }
    SendMessageA(list().handle(), WM_CHAR, ctrlA, 1);
    SendMessageA(list().handle(), WM_CHAR, ctrlC, 1);
    EXPECT_EQ(std::ranges::count(test::clipboardText(), L'\n'), crowd);
    sortBy(0);
    EXPECT_EQ(ListView_GetSelectedCount(list().handle()), UINT{crowd});
    carryOut(IDM_ENABLE);
    EXPECT_NE(list().cell(0, driver::nextRunColumn), "(disabled)");
    carryOut(IDM_ENABLE);
    EXPECT_EQ(list().cell(0, driver::nextRunColumn), "(disabled)");

    std::vector<int> rows;
    for (int row = 0; row < crowd; row += 1000)
        rows.push_back(row);
    list().select(rows);
    sortBy(1);
    EXPECT_EQ(ListView_GetSelectedCount(list().handle()), rows.size());
    carryOut(IDM_DELETE);
    EXPECT_EQ(list().rowCount(), crowd - static_cast<int>(rows.size()));
    ASSERT_NO_FATAL_FAILURE(close());
    EXPECT_EQ(driver::savedSchedule().size(), crowd - rows.size());
}

} // namespace
