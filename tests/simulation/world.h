// What the program does not decide: chance, the entries that it makes, and the runs of the spiders.
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

/// Random numbers that are the same on every platform, which those of the standard's distributions are not.
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
    int pausedRingMinutes = 30; ///< no ring of entries that follow one another goes round faster
    Second from = 0;            ///< entries that run once do so in this time
    Second to = 0;
};

/// An entry for one of the positions 0 to count, named by its serial number.
plain::Item randomItem(Dice& dice, const Mix& mix, int serial, int position, int count);

/// The spiders of one side. How long a run takes and what it leaves depends on its project and on how often
/// it ran before, so that two sides which start the same runs see the same ends.
class Spiders {
public:
    explicit Spiders(std::uint64_t seed) : seed_(seed) {}

    /// False when the system cannot start the run.
    bool launch(const std::string& path, int number, Second now);

    /// The number of the next run that has ended by now, its outcome being left; 0: none has.
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
    std::multimap<Second, End> ends_; // equal keys stay in the order of their coming
    std::map<int, plain::Outcome> left_;
};

} // namespace simulation
