#include "tests/simulation/world.h"

#include "scheduler/model/scheduledproject.h"

namespace simulation {

using plain::Item;

namespace {

int randomKind(Dice& dice, const Mix& mix) {
    static_assert(scheduler::kindCount == 6, "Give each kind a share here, and a rule in nextRunOf().");
    const int share = dice.upTo(999);
    if (share < mix.hourlyPerThousand)
        return 2;
    if (share < mix.hourlyPerThousand + mix.dailyPerThousand)
        return 3;
    return dice.oneOf(
        {0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 4, 4, 4, 4, 4, 5, 5, 5, 5, 5, scheduler::kindCount, -1});
}

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

std::uint64_t numberOf(const std::string& text) {
    std::uint64_t number = 0;
    for (const char character : text)
        number = number * 31 + static_cast<unsigned char>(character);
    return number;
}

} // namespace

Item randomItem(Dice& dice, const Mix& mix, int serial, int position, int count) {
    Item item;
    item.path = (dice.oneIn(12) ? "run:" : "") + std::string("p") + std::to_string(serial) + ".kra";
    item.kind = randomKind(dice, mix);
    if (item.kind == 5)
        item.time = mix.from + dice.between(-10'000, static_cast<int>(mix.to - mix.from));
    else
        item.time = mix.from + dice.between(-100'000'000, 100'000'000);
    if (dice.oneIn(3)) // so that several are due at the same time
        item.time -= item.time % 3600;
    if (dice.oneIn(50))
        item.time = dice.oneOf({-1, -1'000'000, 0});
    item.after = dice.oneIn(25)   ? position
                 : dice.oneIn(40) ? dice.oneOf({-7, count + 1, 5000, 2'147'483'647})
                                  : dice.between(-1, count);
    item.minutes = item.kind == 2 ? dice.oneOf({dice.upTo(59), dice.upTo(59), dice.upTo(59), 0, 60, 90})
                                  : dice.oneOf({0, 0, 1, 5, 10, 60, 1440});
    if (item.kind == 0 && item.after >= position)
        item.minutes = dice.between(mix.minCycleMinutes, 20 * mix.minCycleMinutes);
    const bool never = dice.oneIn(30);
    for (unsigned char& runsThen : item.days)
        runsThen = !never && dice.oneIn(2);
    if (!never)
        item.days[static_cast<unsigned>(dice.upTo(6))] = 1;
    item.dayOfMonth =
        dice.oneOf({-1, 0, 1, 2, 15, 28, 29, 30, 31, 32, 100, dice.between(1, 31), dice.between(1, 31)});
    item.off = dice.oneIn(15);
    item.retries = static_cast<unsigned>(dice.oneOf({0, 0, 0, 1, 2, 3}));
    item.retryMinutes = dice.oneOf({0, 1, 15, 15, 60});
    return item;
}

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
