// Random numbers that are the same on every platform, which those of the standard's distributions are not.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>

namespace simulation {

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

} // namespace simulation
