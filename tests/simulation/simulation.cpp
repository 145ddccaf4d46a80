#include "tests/simulation/simulation.h"

#include "tests/support/encodedschedule.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace simulation {

using plain::Item;
using scheduler::ScheduledProject;

Simulation::Simulation(std::uint64_t seed, const Plan& plan)
    : dice_(seed),
      plan_(plan),
      now_(plan.start),
      end_(plan.start + plan.length),
      engine_(seed),
      plain_(seed) {
    plan_.mix.from = plan.start;
    plan_.mix.to = end_;
    plain_.rules.sideBySide = plan.conflicts == Conflicts::SideBySide;
    plain_.rules.waitMinutes = static_cast<unsigned>(dice_.oneOf({0, 1, 20, 90}));
    for (; serial_ < plan.entries; ++serial_)
        plain_.rules.items.push_back(randomItem(dice_, plan_.mix, serial_, serial_, plan.entries));
    planActs();
}

void Simulation::run(bool everySecond) {
    std::vector<ScheduledProject> entries;
    for (const Item& item : plain_.rules.items)
        entries.push_back(plain::entryOf(item));
    start(test::encodedSchedule(entries), plain_.rules.items);
    slowDownCycles();
    while (now_ < end_ && !testing::Test::HasFatalFailure()) {
        step();
        compare();
        now_ = everySecond ? now_ + 1 : nextEventSecond();
        ++steps_;
    }
}

void Simulation::step() {
    engine_.clock.set(engineNow());
    deliverEnds();
    while (!acts_.empty() && acts_.begin()->first <= now_) {
        const Act act = acts_.begin()->second;
        acts_.erase(acts_.begin());
        perform(act);
    }
    engine_.second();
    plain_.rules.second(now_);
    deliverEnds();
}

void Simulation::deliverEnds() {
    while (const int number = engine_.spiders.nextEnded(now_)) {
        const bool matched = engine_.program->engine.onRunFinished(static_cast<std::uint32_t>(number));
        engine_.logEnd(matched, number);
    }
    while (const int number = plain_.spiders.nextEnded(now_))
        plain_.logEnd(plain_.rules.processEnded(number, now_), number);
}

void Simulation::compare() {
    ASSERT_EQ(engine_.events, plain_.events) << "at " << now_;
    for (const std::string& event : engine_.events)
        launches_ += event.starts_with("launch");
    engine_.events.clear();
    plain_.events.clear();
    // Rare comparisons suffice: a difference persists or shows in the events.
    if (steps_ % plan_.stepsPerComparison != 0)
        return;
    const scheduler::ScheduleList& entries = engine_.program->entries;
    ASSERT_EQ(entries.size(), plain_.rules.items.size()) << "at " << now_;
    for (std::size_t i = 0; i < entries.size(); ++i)
        ASSERT_EQ(plain::itemOf(entries[i]), plain_.rules.items[i]) << "entry " << i << " at " << now_;
}

// The next second in which either side may act, or an earlier random one.
Second Simulation::nextEventSecond() {
    Second next = now_ + dice_.between(1, 7200);
    next = std::min({next, engine_.spiders.nextEnd(), plain_.spiders.nextEnd()});
    if (!acts_.empty())
        next = std::min(next, std::max(acts_.begin()->first, now_ + 1));
    if (plain_.rules.suspended)
        return next;
    bool anotherRuns = false;
    for (const ScheduledProject& entry : engine_.program->entries.entries())
        anotherRuns |= entry.running != 0;
    for (const ScheduledProject& entry : engine_.program->entries.entries()) {
        if (!entry.disabled && !entry.running)
            next = std::min(next,
                            nextEventOf(entry.nextRun.seconds(), entry.waitingSince.seconds(), anotherRuns));
    }
    anotherRuns = std::ranges::any_of(plain_.rules.items, [](const Item& item) { return item.runs; });
    for (const Item& item : plain_.rules.items) {
        if (!item.off && !item.runs)
            next = std::min(next, nextEventOf(item.next, item.waitsSince, anotherRuns));
    }
    return next;
}

Second Simulation::nextEventOf(Second nextRun, Second waitsSince, bool anotherRuns) const {
    if (nextRun > now_)
        return nextRun;
    const Second expiry = waitsSince + (Second{plain_.rules.waitMinutes} + 1) * minute;
    // If the clock was set back to before waitsSince, the wait may end at once.
    if (waitsSince == 0 || waitsSince > now_ || !anotherRuns || expiry <= now_ + 1)
        return now_ + 1;
    return expiry - 1;
}

} // namespace simulation
