// Measures a subject and its lower bound alternately, so that other load affects both alike.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace bench {

/// Runs once and returns the seconds taken, without set-up and clean-up.
using Timed = std::function<double()>;

template<class Act>
double secondsOf(Act&& act) {
    const auto begin = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Keeps the compiler from removing the computation of `value`.
template<class Value>
void keep(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

struct Comparison {
    std::string what;
    std::size_t count; ///< items per run
    std::string things;
    std::string limit;
    double wanted;
    Timed allowance = {}; ///< subtracted from the subject's time before the comparison
};

/// Prints one row. The ratio is the median of the ratios of all rounds.
void compare(const Comparison& comparison, const Timed& subject, const Timed& limit);

} // namespace bench
