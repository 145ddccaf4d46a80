#include "tests/simulation/simulation.h"
#include "tests/support/environment.h"
#include "tests/support/instants.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>

namespace {

using namespace simulation;

// The native build simulates less, because the sanitizers make it slow.
#ifdef _WIN32
constexpr int monthDivisor = 1;
constexpr int years = 10;
#else
constexpr int monthDivisor = 4;
constexpr int years = 1;
#endif

/// Usually up to three weeks before a clock change.
Second randomStart(Dice& dice) {
    static const std::vector<std::int32_t> changes = test::clockChanges();
    if (changes.empty() || dice.oneIn(4))
        return 1'700'000'000 + Second{dice.upTo(1200)} * day + dice.upTo(86'400);
    const auto change = changes[static_cast<std::size_t>(dice.upTo(static_cast<int>(changes.size()) - 1))];
    return change - dice.between(1, 20) * day - dice.upTo(86'400);
}

class SimulatedTest : public testing::TestWithParam<Conflicts> {
protected:
    SimulatedTest() { plan.conflicts = GetParam(); }

    void simulate(unsigned long usualNumber, bool everySecond) {
        for (const std::uint64_t seed : test::seeds(usualNumber)) {
            Dice dice(seed ^ 0x5EED);
            plan.start = randomStart(dice);
            const auto simulated = std::make_unique<Simulation>(seed, plan);
            simulated->run(everySecond);
            std::cout << "seed " << seed << " from " << plan.start << ": " << simulated->steps() << " steps, "
                      << simulated->launches() << " runs\n";
            ASSERT_FALSE(HasFailure()) << "SCHEDULER_SEED=" << seed;
            EXPECT_GT(simulated->launches(), 10u);
        }
    }

    Plan plan;
};

class SimulatedMonths : public SimulatedTest {};

TEST_P(SimulatedMonths, AgreeWithThePlainRules) {
    plan.length /= monthDivisor;
    simulate(3, false);
}

TEST_P(SimulatedMonths, AgreeWithThePlainRulesEverySecond) {
    plan.length = 26 * hour / monthDivisor;
    plan.actsPerDay = 40;
    simulate(1, true);
}

INSTANTIATE_TEST_SUITE_P(Policies, SimulatedMonths,
                         testing::Values(Conflicts::Wait, Conflicts::SideBySide, Conflicts::Changing));

class SimulatedYears : public SimulatedTest {};

TEST_P(SimulatedYears, AgreeWithThePlainRules) {
    plan.length = years * 365 * day;
    plan.entries = 500;
    plan.mix.hourlyPerThousand = 5; // each one runs 8,760 times a year
    plan.mix.dailyPerThousand = 40;
    plan.mix.minCycleMinutes = 1440;
    plan.actsPerDay = 2;
    plan.daysPerRestart = 20;
    plan.daysPerSuspension = 20;
    plan.daysPerDryRun = 100;
    plan.daysPerClockChange = 60;
    plan.stepsPerComparison = 64;
    simulate(1, false);
}

INSTANTIATE_TEST_SUITE_P(Policies, SimulatedYears, testing::Values(Conflicts::Changing));

} // namespace
