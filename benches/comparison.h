// Times something and what bounds it, in turns: what else the machine does meanwhile meets both alike.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace bench {

/// Something that is done once and says how many seconds it took: what it sets up and clears away is not
/// counted.
using Timed = std::function<double()>;

/// Seconds that `act` takes.
template<class Act>
double secondsOf(Act&& act) {
    const auto begin = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Keeps the compiler from leaving out what computes `value`.
template<class Value>
void keep(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

struct Comparison {
    std::string what;
    std::size_t count; ///< of the things that are done in one go
    std::string things;
    std::string limit;
    double wanted;
    Timed allowance = {}; ///< what is taken off the subject's time before it is held against the limit
};

/// Runs both in turns, prints the row. The ratio is the median of the rounds' own ratios.
void compare(const Comparison& comparison, const Timed& subject, const Timed& limit);

} // namespace bench
