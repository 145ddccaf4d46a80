// Starts the program with damaged schedule files. If a file is still readable, the program must load all its
// entries, otherwise none.

#include "scheduler/model/schedulefile.h"
#include "tests/program/programtest.h"
#include "tests/support/damagedschedule.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/environment.h"
#include "tests/support/plainentries.h"
#include "tests/support/plainschedule.h"

#include <iostream>

using plain::Item;

namespace {

constexpr unsigned long defaultStarts = 20;

/// Clears the fields that a start resets, and the next runs, which are not compared.
std::vector<Item> afterStart(std::vector<Item> items) {
    for (Item& item : items) {
        item.runs = 0;
        item.waitsSince = item.began = item.number = 0;
        item.retried = 0;
        item.next = 0;
    }
    return items;
}

class DamagedSchedule : public driver::ProgramTest {
protected:
    void SetUp() override {
        ProgramTest::SetUp();
        base::writeNumber(HKEY_CURRENT_USER, driver::stateKey + "\\Suspended", 1);
    }

    /// Starts the program with this file, exits it and checks what it saved. Returns the number of entries.
    std::size_t startOn(const std::vector<std::byte>& content) {
        driver::writeText(scheduler::schedulePath(),
                          {reinterpret_cast<const char*>(content.data()), content.size()});
        plain::File file(content);
        file.read();
        const std::vector<Item> expected = afterStart(file.items);

        EXPECT_TRUE(scheduler_.start("/s"));
        EXPECT_EQ(list().rowCount(), static_cast<int>(expected.size()));
        EXPECT_TRUE(scheduler_.exit());

        std::vector<scheduler::ScheduledProject> saved = driver::savedSchedule();
        EXPECT_EQ(saved.size(), expected.size());
        for (std::size_t i = 0; i < std::min(saved.size(), expected.size()); ++i) {
            saved[i].nextRun = base::TimeValue();
            EXPECT_EQ(plain::itemOf(saved[i]), expected[i]) << "entry " << i;
        }
        return saved.size();
    }
};

TEST_F(DamagedSchedule, LoadsTheRightEntriesOrNone) {
    const std::vector<std::byte> whole = test::encodedSchedule(test::richSchedule());
    const std::vector<std::uint32_t> seeds = test::seeds(defaultStarts);
    std::size_t withEntries = 0;
    for (const std::uint32_t seed : seeds) {
        SCOPED_TRACE("SCHEDULER_SEED=" + std::to_string(seed));
        withEntries += startOn(test::Damage(whole, seed).done()) != 0;
        if (HasFailure())
            return;
    }
    const std::size_t starts = seeds.size();
    std::cout << starts << " starts, " << withEntries << " of them with entries\n";
    if (starts < defaultStarts)
        return;
    EXPECT_GT(withEntries, starts / 20);
    EXPECT_LT(withEntries, starts - starts / 20);
}

} // namespace
