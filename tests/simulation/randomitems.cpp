#include "tests/simulation/randomitems.h"

#include "scheduler/model/scheduledproject.h"

#include <string>

namespace simulation {

using plain::Item;
using plain::Second;

namespace {

int randomKind(Dice& dice, const Mix& mix) {
    static_assert(scheduler::kindCount == 6, "Give each kind its share here, and its rule to nextRunOf().");
    const int share = dice.upTo(999);
    if (share < mix.hourlyPerThousand)
        return 2;
    if (share < mix.hourlyPerThousand + mix.dailyPerThousand)
        return 3;
    return dice.oneOf({0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 4, 4, 4, 4, 4, 5, 5, 5, 5, 5, 6, -1});
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
    if (dice.oneIn(3)) // several at the same moment
        item.time -= item.time % 3600;
    if (dice.oneIn(50))
        item.time = dice.oneOf({-1, -1'000'000, 0});
    item.after = dice.oneIn(25)   ? position
                 : dice.oneIn(40) ? dice.oneOf({-7, count + 1, 5000, 2'147'483'647})
                                  : dice.between(-1, count);
    item.minutes = item.kind == 2 ? dice.oneOf({dice.upTo(59), dice.upTo(59), dice.upTo(59), 0, 60, 90})
                                  : dice.oneOf({0, 0, 1, 5, 10, 60, 1440});
    if (item.kind == 0 && item.after >= position)
        item.minutes = dice.between(mix.pausedRingMinutes, 20 * mix.pausedRingMinutes);
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

} // namespace simulation
