// Ten years of five hundred random entries, which come, change and go.
#include "tests/simulation/seeds.h"

namespace {

using namespace simulation;

TEST(SimulatedYearsTest, TheProgramDoesWhatThePlainRulesSay) {
    Plan plan;
    plan.length = 3652 * day;
    plan.entries = 500;
    plan.mix.hourlyPerThousand = 5; // each of them runs 87,000 times
    plan.mix.dailyPerThousand = 40;
    plan.mix.pausedRingMinutes = 1440;
    plan.actsPerDay = 2;
    plan.daysPerRestart = 20;
    plan.daysPerSuspension = 20;
    plan.daysPerDryRun = 100;
    plan.daysPerClockChange = 60;
    plan.stepsPerComparison = 64;
    simulate(1, plan, false);
}

} // namespace
