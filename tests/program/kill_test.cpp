// The program is ended from outside, at any moment of its life, and started again: it always comes up. The
// moments are drawn from a seed; SCHEDULER_SEED sets it, SCHEDULER_KILLS the number of them.

#include "resources/ids.h"
#include "scheduler/model/schedulecodec.h"
#include "scheduler/model/schedulefile.h"
#include "tests/program/listdriver.h"
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

std::uint64_t sizeOf(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
    return (std::uint64_t{data.nFileSizeHigh} << 32) + data.nFileSizeLow;
}

/// Sends the commands that change and save the schedule as fast as the program takes them.
class Toggler {
public:
    explicit Toggler(HWND window) : window_(window) { driver::ListDriver(window).select({0}); }
    void toggle() const { PostMessageA(window_, WM_COMMAND, IDM_ENABLE, 0); }

private:
    HWND window_;
};

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

    /// The schedule that the killed program left can be read as a whole, or not at all; a new copy shows it,
    /// and goes on as any other: what it is told, it saves.
    std::size_t comesUpAgain() {
        const std::size_t left = driver::savedSchedule().size();
        EXPECT_TRUE(scheduler_.start("/s"));
        EXPECT_EQ(driver::ListDriver(scheduler_.window()).rowCount(), static_cast<int>(left));
        EXPECT_TRUE(scheduler_.exit());
        EXPECT_EQ(driver::savedSchedule().size(), left);
        return left;
    }
};

// A large schedule, so that a save takes its time.
TEST_F(Kill, InTheMiddleOfASaveLeavesTheScheduleWholeOrNone) {
    constexpr std::size_t count = 30000;
    driver::saveEntries(entries(count));
    const std::uint64_t whole = sizeOf(scheduler::schedulePath());
    int halves = 0;
    for (int attempts = 0; attempts < 200 && halves < 3; ++attempts) {
        driver::saveEntries(entries(count));
        ASSERT_TRUE(scheduler_.start("/s"));
        const Toggler toggler(scheduler_.window());
        for (int i = 0; i < 20; ++i)
            toggler.toggle();
        const ULONGLONG last = GetTickCount64() + 2000;
        while (sizeOf(scheduler::schedulePath()) == whole && GetTickCount64() < last) {
        }
        scheduler_.kill();
        const std::uint64_t left = sizeOf(scheduler::schedulePath());
        ASSERT_LE(left, whole);
        halves += left < whole;
        ASSERT_EQ(comesUpAgain(), left < whole ? 0U : count);
    }
    EXPECT_EQ(halves, 3) << "no save was met";
}

TEST_F(Kill, AtAnyMomentTheProgramComesUpAgain) {
    const unsigned long seed = test::environmentNumber("SCHEDULER_SEED").value_or(std::random_device()());
    const unsigned long kills = test::environmentNumber("SCHEDULER_KILLS").value_or(25);
    std::cout << "SCHEDULER_SEED=" << seed << "\n";
    std::mt19937 random(static_cast<std::uint32_t>(seed));
    const driver::SampleSpider spider;
    const std::string project = spider.makeProject("quick.kra", "ms=20\n");
    std::vector<ScheduledProject> all = entries(50);
    // Two that follow each other for ever once one of them is started.
    for (const std::int32_t position : {0, 1}) {
        ScheduledProject& entry = all[static_cast<std::size_t>(position)];
        entry.path = project;
        entry.kind = ScheduleKind::AfterProject;
        entry.afterIndex = 1 - position;
        entry.disabled = 0;
    }
    std::size_t emptied = 0;
    for (unsigned long i = 0; i < kills && !HasFailure(); ++i) {
        SCOPED_TRACE("kill " + std::to_string(i));
        driver::saveEntries(all);
        scheduler_.launch(random() % 2 ? "/s" : "");
        // Half of them while it starts, the others while runs begin and end, questions stand or it exits.
        if (random() % 2 == 0) {
            Sleep(random() % 250);
        } else {
            ASSERT_TRUE(scheduler_.waitForWindow());
            driver::ListDriver(scheduler_.window()).select({0});
            scheduler_.command(IDM_RUN);
            Sleep(random() % 1500);
            constexpr int commands[] = {IDM_EXIT, IDM_ABOUT, IDM_PREFERENCES, IDM_SUSPEND, IDM_ENABLE};
            scheduler_.command(commands[random() % std::size(commands)]);
            Sleep(random() % 40);
        }
        scheduler_.kill();
        base::deleteKey(HKEY_CURRENT_USER, driver::programKey);
        const std::size_t left = driver::savedSchedule().size();
        ASSERT_TRUE(left == all.size() || left == 0) << left;
        emptied += left == 0;
        ASSERT_TRUE(scheduler_.start("/s"));
        EXPECT_EQ(driver::ListDriver(scheduler_.window()).rowCount(), static_cast<int>(left));
        scheduler_.kill();
    }
    std::cout << kills << " kills, " << emptied << " met a save\n";
}

// What ended while no copy was there is not made up for, and what a copy left behind does no harm.
TEST_F(Kill, ARunThatOutlivesTheProgramLeavesNothingForTheNextOne) {
    const driver::SampleSpider spider;
    std::vector<ScheduledProject> all = entries(1);
    all[0].path = spider.makeProject("slow.kra", "ms=1500\nresult=too late\n");
    driver::saveEntries(all);
    ASSERT_TRUE(scheduler_.start());
    driver::ListDriver(scheduler_.window()).select({0});
    scheduler_.command(IDM_RUN);
    ASSERT_TRUE(waitUntil([&] { return spider.logged("start run 1") == 1; }));
    scheduler_.kill();
    const std::string result = scheduler::outcomeKey(1) + "Result";
    ASSERT_TRUE(waitUntil([&] { return base::getString(HKEY_LOCAL_MACHINE, result) == "too late"; }));
    comesUpAgain();
    EXPECT_EQ(base::getString(HKEY_LOCAL_MACHINE, result), "");
    EXPECT_EQ(driver::savedSchedule().front().lastResult, "");
    EXPECT_EQ(driver::savedSchedule().front().running, 0);
}

} // namespace
