#include "tests/simulation/randomitems.h"

#include <algorithm>

namespace simulation {

using base::TimeValue;
using plain::Item;
using plain::Second;
using scheduler::ScheduledProject;
using scheduler::ScheduleKind;

namespace {

int randomKind(Dice& dice, const Mix& mix) {
    const int share = dice.upTo(999);
    if (share < mix.hourlyPerThousand)
        return 2;
    if (share < mix.hourlyPerThousand + mix.dailyPerThousand)
        return 3;
    static_assert(scheduler::kindCount == 6, "Give each kind its share here, and its rule to nextRunOf().");
    return dice.oneOf({0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 4, 4, 4, 4, 4, 5, 5, 5, 5, 5, 6, -1});
}

} // namespace

Item randomItem(Dice& dice, const Mix& mix, int serial, int position, int count) {
    Item item;
    item.isProject = !dice.oneIn(12);
    item.path = (item.isProject ? "" : "run:") + std::string("p") + std::to_string(serial) + ".kra";
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
    for (bool& runsThen : item.days)
        runsThen = !never && dice.oneIn(2);
    if (!never)
        item.days[static_cast<unsigned>(dice.upTo(6))] = true;
    item.dayOfMonth =
        dice.oneOf({-1, 0, 1, 2, 15, 28, 29, 30, 31, 32, 100, dice.between(1, 31), dice.between(1, 31)});
    item.off = dice.oneIn(15);
    item.retries = static_cast<unsigned>(dice.oneOf({0, 0, 0, 1, 2, 3}));
    item.retryMinutes = dice.oneOf({0, 1, 15, 15, 60});
    return item;
}

ScheduledProject entryFrom(const Item& item) {
    ScheduledProject entry;
    entry.path = item.path;
    entry.kind = static_cast<ScheduleKind>(item.kind);
    entry.time = TimeValue(static_cast<std::int32_t>(item.time));
    entry.minutes = item.minutes;
    entry.afterIndex = item.after;
    for (std::size_t i = 0; i < 7; ++i)
        entry.weekdays[i] = item.days[i] ? 1 : 0;
    entry.dayOfMonth = item.dayOfMonth;
    entry.disabled = item.off ? 1 : 0;
    entry.retryLimit = item.retries;
    entry.retryIntervalMinutes = item.retryMinutes;
    return entry;
}

bool same(const ScheduledProject& entry, const Item& item) {
    return entry.nextRun.seconds() == item.next && (entry.running != 0) == item.runs &&
           (entry.disabled != 0) == item.off && entry.waitingSince.seconds() == item.waitsSince &&
           entry.runStart.seconds() == item.began && entry.runNumber == item.number &&
           entry.retriesDone == item.retried && entry.lastRun.seconds() == item.lastRun &&
           static_cast<int>(entry.kind) == item.kind && entry.time.seconds() == item.time &&
           entry.minutes == item.minutes && entry.afterIndex == item.after &&
           entry.dayOfMonth == item.dayOfMonth && entry.retryLimit == item.retries &&
           entry.retryIntervalMinutes == item.retryMinutes && entry.path == item.path &&
           entry.lastResult == item.result &&
           std::equal(item.days.begin(), item.days.end(), entry.weekdays.begin(),
                      [](bool runsThen, std::uint8_t flag) { return runsThen == (flag == 1); });
}

std::string stateOf(const Item& item) {
    std::string days;
    for (const bool runsThen : item.days)
        days += runsThen ? '1' : '0';
    return item.path + ": kind " + std::to_string(item.kind) + ", time " + std::to_string(item.time) +
           ", minutes " + std::to_string(item.minutes) + ", after " + std::to_string(item.after) + ", days " +
           days + ", day " + std::to_string(item.dayOfMonth) + ", retries " + std::to_string(item.retries) +
           " every " + std::to_string(item.retryMinutes) + ", runs " + std::to_string(item.runs) + ", off " +
           std::to_string(item.off) + ", waits since " + std::to_string(item.waitsSince) + ", began " +
           std::to_string(item.began) + ", number " + std::to_string(item.number) + ", next " +
           std::to_string(item.next) + ", retried " + std::to_string(item.retried) + ", last " +
           std::to_string(item.lastRun) + ", " + item.result;
}

std::string stateOf(const ScheduledProject& entry) {
    Item item;
    item.path = entry.path;
    item.kind = static_cast<int>(entry.kind);
    item.time = entry.time.seconds();
    item.minutes = entry.minutes;
    item.after = entry.afterIndex;
    for (std::size_t i = 0; i < 7; ++i)
        item.days[i] = entry.weekdays[i] != 0;
    item.dayOfMonth = entry.dayOfMonth;
    item.retries = entry.retryLimit;
    item.retryMinutes = entry.retryIntervalMinutes;
    item.runs = entry.running != 0;
    item.off = entry.disabled != 0;
    item.waitsSince = entry.waitingSince.seconds();
    item.began = entry.runStart.seconds();
    item.number = entry.runNumber;
    item.next = entry.nextRun.seconds();
    item.retried = entry.retriesDone;
    item.lastRun = entry.lastRun.seconds();
    item.result = entry.lastResult;
    return stateOf(item);
}

} // namespace simulation
