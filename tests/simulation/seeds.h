// The simulations that a run of the tests makes, one for each of its seeds.
#pragma once

#include "tests/simulation/dice.h"
#include "tests/simulation/simulation.h"
#include "tests/support/instants.h"
#include "tests/support/seeds.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>

namespace simulation {

/// A beginning such that the clock changes within the next weeks; any, when it never does here, and now and
/// then.
inline Second randomStart(Dice& dice) {
    static const std::vector<std::int32_t> changes = test::clockChanges();
    if (changes.empty() || dice.oneIn(4))
        return 1'700'000'000 + Second{dice.upTo(1200)} * day + dice.upTo(86'400);
    const auto change = changes[static_cast<std::size_t>(dice.upTo(static_cast<int>(changes.size()) - 1))];
    return change - dice.between(1, 20) * day - dice.upTo(86'400);
}

inline void simulate(unsigned long usualNumber, Plan plan, bool everySecond) {
    for (const std::uint64_t seed : test::seeds(usualNumber)) {
        SCOPED_TRACE("SCHEDULER_SEED=" + std::to_string(seed));
        Dice dice(seed ^ 0x5EED);
        plan.start = randomStart(dice);
        const auto simulated = std::make_unique<Simulation>(seed, plan);
        simulated->run(everySecond);
        std::cout << "seed " << seed << " from " << plan.start << ": " << simulated->steps() << " steps, "
                  << simulated->launches() << " runs\n";
        if (testing::Test::HasFatalFailure())
            return;
        EXPECT_GT(simulated->launches(), 10u);
    }
}

} // namespace simulation
