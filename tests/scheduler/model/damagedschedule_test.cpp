#include "tests/scheduler/model/decodedschedule.h"
#include "tests/support/damagedschedule.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/environment.h"
#include "tests/support/plainentries.h"
#include "tests/support/plainschedule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

namespace {

using namespace test;
using plain::Load;
using scheduler::ScheduledProject;

class DamagedSchedule : public DecodedSchedule {
protected:
    Load check(const Bytes& content) {
        list.assign({filledEntry()});
        plain::File file(content);
        const Load expected = file.read();
        if (expected == Load::Untouched)
            file.items = {plain::itemOf(filledEntry())};
        EXPECT_EQ(decode(content), expected == Load::Replaced);
        EXPECT_EQ(list.size(), file.items.size());
        for (std::size_t i = 0; i < std::min(list.size(), file.items.size()); ++i)
            EXPECT_EQ(plain::itemOf(list[i]), file.items[i]) << "entry " << i;
        return expected;
    }

    const Bytes whole = encodedSchedule(std::vector{ScheduledProject(), filledEntry(), ScheduledProject()});
};

TEST_F(DamagedSchedule, RoundTripsWhenUndamaged) {
    EXPECT_EQ(check(encodedSchedule(richSchedule())), Load::Replaced);
    EXPECT_EQ(entriesOf(list), richSchedule());
}

TEST_F(DamagedSchedule, HasNoEntriesWhenTruncated) {
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const Bytes content(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(check(content), size < headerSize ? Load::Untouched : Load::Emptied) << size;
    }
}

TEST_F(DamagedSchedule, HasTheExpectedEntriesOrNoneAfterABitFlip) {
    for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
        Bytes content = whole;
        content[bit / 8] ^= static_cast<std::byte>(1U << bit % 8);
        check(content);
        ASSERT_FALSE(HasFailure()) << "bit " << bit;
    }
}

TEST_F(DamagedSchedule, HasTheExpectedEntriesOrNoneAfterUpToThreeChanges) {
    const std::vector<std::uint32_t> seeds = test::seeds(2000);
    const Bytes rich = encodedSchedule(richSchedule());
    std::map<Load, int> results;
    for (const std::uint32_t seed : seeds) {
        ++results[check(Damage(rich, seed).done())];
        ASSERT_FALSE(HasFailure()) << "SCHEDULER_SEED=" << seed;
    }
    if (seeds.size() < 1000)
        return;
    for (const Load result : {Load::Untouched, Load::Emptied, Load::Replaced})
        EXPECT_GT(results[result], 50) << static_cast<int>(result);
}

} // namespace
