// Months of hundreds of random entries, in which the program and the plainly told rules have to do the same.
#include "tests/simulation/seeds.h"

namespace {

using namespace simulation;

class SimulatedMonthsTest : public testing::TestWithParam<Conflicts> {
protected:
    static Plan plan() {
        Plan plan;
        plan.conflicts = GetParam();
        return plan;
    }
};

TEST_P(SimulatedMonthsTest, TheProgramDoesWhatThePlainRulesSay) {
    simulate(3, plan(), false);
}

TEST_P(SimulatedMonthsTest, EverySecondOfADay) {
    Plan day = plan();
    day.length = 26 * hour;
    day.actsPerDay = 40;
    simulate(1, day, true);
}

INSTANTIATE_TEST_SUITE_P(Policies, SimulatedMonthsTest,
                         testing::Values(Conflicts::Wait, Conflicts::SideBySide, Conflicts::Changing));

} // namespace
