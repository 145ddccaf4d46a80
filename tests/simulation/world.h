// The simulation's random numbers, random entries and spider runs.
#pragma once

#include "tests/support/plainrules.h"

#include <cstdint>
#include <initializer_list>
#include <map>
#include <random>
#include <string>
#include <unordered_map>

namespace simulation {

using plain::Second;

/// Random numbers that are the same on every platform, unlike the standard distributions.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    int upTo(int highest) { return between(0, highest); }
    int between(int lowest, int highest) {
        return lowest + static_cast<int>(engine_() % static_cast<std::uint64_t>(highest - lowest + 1));
    }
    bool oneIn(int n) { return upTo(n - 1) == 0; }
    int oneOf(std::initializer_list<int> values) {
        return values.begin()[upTo(static_cast<int>(values.size()) - 1)];
    }

private:
    std::mt19937_64 engine_;
};

struct Mix {
    int hourlyPerThousand = 30;
    int dailyPerThousand = 230;
    int minCycleMinutes = 30; ///< each cycle of followers has a delay of at least this
    Second from = 0;          ///< most entries that run once are due from here to `to`
    Second to = 0;
};

/// `position` is from 0 to `count`. The path contains the serial number.
plain::Item randomItem(Dice& dice, const Mix& mix, int serial, int position, int count);

/// The spiders of one side. A run depends only on the seed, the path and how often that path has run before.
/// So both sides have the same runs.
class Spiders {
public:
    explicit Spiders(std::uint64_t seed) : seed_(seed) {}

    /// False if the run cannot be started.
    bool launch(const std::string& path, int number, Second now);

    /// The number of the next run that has ended by `now`, or 0. Stores the outcome for take().
    int nextEnded(Second now);

    Second nextEnd() const { return ends_.empty() ? plain::never : ends_.begin()->first; }

    plain::Outcome take(int number);

    void forgetAll();

private:
    struct End {
        int number;
        bool leavesOutcome;
        plain::Outcome outcome;
    };

    std::uint64_t seed_;
    std::unordered_map<std::string, std::uint64_t> runsOf_;
    std::multimap<Second, End> ends_; // equal keys keep their order of insertion
    std::map<int, plain::Outcome> left_;
};

} // namespace simulation
