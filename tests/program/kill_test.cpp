// Kills the program at random moments and restarts it. SCHEDULER_SEED sets the seed of the random numbers,
// SCHEDULER_KILLS the number of kills.

#include "resources/ids.h"
#include "tests/program/programtest.h"
#include "tests/support/environment.h"

#include <iostream>
#include <random>

using base::TimeSpan;
using base::TimeValue;
using driver::waitUntil;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

class Kill : public driver::ProgramTest {
protected:
    static std::vector<ScheduledProject> entries(std::size_t count) {
        std::vector<ScheduledProject> made(count);
        for (std::size_t i = 0; i < count; ++i) {
            made[i].path = "C:\\Sites\\project " + std::to_string(i) + ".kra";
            made[i].kind = ScheduleKind::Daily;
            made[i].time = TimeValue::now() - TimeSpan::fromMinutes(60);
            made[i].disabled = 1;
        }
        return made;
    }
};

TEST_F(Kill, AtAnyMomentAllowsARestart) {
    const unsigned long seed = test::environmentNumber("SCHEDULER_SEED").value_or(1);
    const unsigned long kills = test::environmentNumber("SCHEDULER_KILLS").value_or(12);
    std::mt19937 random(static_cast<std::uint32_t>(seed));
    const driver::SampleSpider spider;
    const std::string project = spider.makeProject("quick.kra");
    std::vector<ScheduledProject> all = entries(50);
    // Each of two entries follows the other, so they never stop running once one is started.
    for (const std::int32_t position : {0, 1}) {
        ScheduledProject& entry = all[static_cast<std::size_t>(position)];
        entry.path = project;
        entry.kind = ScheduleKind::AfterProject;
        entry.afterIndex = 1 - position;
        entry.disabled = 0;
    }
    std::size_t interrupted = 0;
    for (unsigned long i = 0; i < kills && !HasFailure(); ++i) {
        SCOPED_TRACE("kill " + std::to_string(i));
        driver::saveEntries(all);
        scheduler_.launch(random() % 2 ? "/s" : "");
        // Half of the kills hit the start, the others hit runs, open dialogs or the exit.
        if (random() % 2 == 0) {
            Sleep(random() % 250);
        } else {
            ASSERT_TRUE(scheduler_.waitForWindow());
            list().select({0});
            scheduler_.command(IDM_RUN);
            Sleep(random() % 500);
            constexpr int commands[] = {IDM_EXIT, IDM_ABOUT, IDM_PREFERENCES, IDM_SUSPEND, IDM_ENABLE};
            scheduler_.command(commands[random() % std::size(commands)]);
            Sleep(random() % 40);
        }
        scheduler_.kill(true);
        base::deleteKey(HKEY_CURRENT_USER, driver::programKey);
        const std::size_t left = driver::savedSchedule().size();
        const std::size_t whole = left != 0 ? left : driver::savedSchedule(driver::safetyCopy("bak")).size();
        ASSERT_EQ(whole, all.size());
        interrupted += left == 0;
        ASSERT_TRUE(scheduler_.start("/s"));
        EXPECT_EQ(list().rowCount(), static_cast<int>(left));
        scheduler_.kill();
    }
    std::cout << kills << " kills, " << interrupted << " of them interrupted a save\n";
}

TEST_F(Kill, ARunThatOutlivesTheProgramDoesNotAffectTheNextStart) {
    const driver::SampleSpider spider;
    std::vector<ScheduledProject> all = entries(1);
    all[0].path = spider.makeProject("slow.kra", spider.untilReleased() + "result=too late\n");
    startWith(all);
    list().select({0});
    scheduler_.command(IDM_RUN);
    ASSERT_TRUE(waitUntil([&] { return spider.logged("start run 1") == 1; }));
    scheduler_.kill();
    spider.release();
    const std::string result = scheduler::outcomeKey(1) + "Result";
    ASSERT_TRUE(waitUntil([&] { return base::getString(HKEY_LOCAL_MACHINE, result) == "too late"; }));
    ASSERT_TRUE(scheduler_.start("/s"));
    EXPECT_EQ(list().rowCount(), 1);
    EXPECT_TRUE(scheduler_.exit());
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, result), "");
    EXPECT_EQ(savedEntry().lastResult, "");
    EXPECT_EQ(savedEntry().running, 0);
}

} // namespace
