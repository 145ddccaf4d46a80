// The spiders of one side of a simulation: how long each run takes and what it leaves depends on what is run
// and on how often it ran before, so that two sides which start the same runs see the same ends.
#pragma once

#include "tests/support/plainrules.h"

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>

namespace simulation {

using plain::Second;

class Dice;

class Spiders {
public:
    explicit Spiders(std::uint64_t seed) : seed_(seed) {}

    /// False when the system cannot start the run.
    bool launch(const std::string& path, int number, Second now);

    /// The number of the next run that has ended by now, its outcome being left; 0: none has.
    int nextEnded(Second now);

    Second nextEnd() const { return ends_.empty() ? plain::never : ends_.begin()->first; }

    /// Reads and deletes an outcome.
    plain::Outcome take(int number);

    /// The program has ended: nobody waits for these runs any more.
    void forgetAll();

private:
    struct End {
        int number;
        bool leavesOutcome;
        plain::Outcome outcome;
    };

    std::uint64_t seed_;
    std::unordered_map<std::string, std::uint64_t> runsOf_;
    std::multimap<Second, End> ends_; // equal keys stay in the order of their coming
    std::map<int, plain::Outcome> left_;
};

} // namespace simulation
