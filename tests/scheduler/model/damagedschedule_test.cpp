// Thousands of damaged files of a rich schedule: whatever became of one, the program has the entries that it
// holds, as the plainly told format says, or none.
#include "scheduler/model/schedulecodec.h"
#include "tests/support/damagedschedule.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/plainentries.h"
#include "tests/support/plainschedule.h"
#include "tests/support/seeds.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

using plain::Load;

Load check(const std::vector<std::byte>& content) {
    plain::File file(content);
    const Load expected = file.read();
    scheduler::ScheduleList list;
    list.append(test::filledEntry());
    EXPECT_EQ(decodeSchedule(content, scheduler::scheduleMagic, list), expected == Load::Replaced);
    if (expected == Load::Untouched) {
        EXPECT_EQ(list.size(), 1u);
    } else if (expected == Load::Emptied) {
        EXPECT_TRUE(list.empty());
    } else {
        EXPECT_EQ(list.size(), file.items.size());
        for (std::size_t i = 0; i < std::min(list.size(), file.items.size()); ++i)
            EXPECT_EQ(plain::itemOf(list[i]), file.items[i]) << "entry " << i;
    }
    return expected;
}

TEST(DamagedSchedule, TheWholeFileIsWhatWasWritten) {
    EXPECT_EQ(check(test::encodedSchedule(test::richSchedule())), Load::Replaced);
}

TEST(DamagedSchedule, HoldsTheRightEntriesOrNone) {
    const std::vector<std::uint32_t> seeds = test::seeds(2000);
    const std::vector<std::byte> whole = test::encodedSchedule(test::richSchedule());
    int results[3] = {};
    for (const std::uint32_t seed : seeds) {
        SCOPED_TRACE("SCHEDULER_SEED=" + std::to_string(seed));
        ++results[static_cast<int>(check(test::Damage(whole, seed).done()))];
        if (HasFailure())
            return;
    }
    std::cout << results[0] << " left the schedule as it was, " << results[1] << " emptied it, " << results[2]
              << " were read\n";
    if (seeds.size() < 1000)
        return;
    for (const int count : results) // of each some
        EXPECT_GT(count, 50);
}

} // namespace
