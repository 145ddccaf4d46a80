#include "tests/simulation/spiders.h"

#include "tests/simulation/dice.h"

namespace simulation {
namespace {

Second duration(Dice& dice) {
    const int kind = dice.upTo(99);
    if (kind < 45)
        return dice.upTo(4);
    if (kind < 80)
        return dice.between(5, 60);
    if (kind < 95)
        return dice.between(60, 600);
    return kind < 99 ? dice.between(600, 3600) : dice.between(3600, 4 * 3600);
}

/// One text's number, the same everywhere.
std::uint64_t numberOf(const std::string& text) {
    std::uint64_t number = 0;
    for (const char character : text)
        number = number * 31 + static_cast<unsigned char>(character);
    return number;
}

} // namespace

bool Spiders::launch(const std::string& path, int number, Second now) {
    const std::uint64_t runs = runsOf_[path]++;
    Dice dice(seed_ * 1'000'003 + numberOf(path) * 10'007 + runs);
    if (dice.oneIn(60))
        return false;
    End end{number, !dice.oneIn(9), {"outcome " + std::to_string(dice.upTo(99)), 0}};
    if (dice.oneIn(4))
        end.outcome.error = static_cast<unsigned>(dice.between(1, 9));
    ends_.emplace(now + duration(dice), end);
    return true;
}

int Spiders::nextEnded(Second now) {
    if (ends_.empty() || ends_.begin()->first > now)
        return 0;
    const End end = ends_.begin()->second;
    ends_.erase(ends_.begin());
    if (end.leavesOutcome)
        left_[end.number] = end.outcome;
    return end.number;
}

plain::Outcome Spiders::take(int number) {
    plain::Outcome outcome = left_[number];
    left_.erase(number);
    return outcome;
}

void Spiders::forgetAll() {
    ends_.clear();
    left_.clear();
}

} // namespace simulation
