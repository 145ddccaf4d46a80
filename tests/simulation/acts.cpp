#include "tests/simulation/simulation.h"
#include "tests/support/encodedschedule.h"

#include <algorithm>

namespace simulation {

using plain::Item;
using scheduler::ScheduledProject;

Second Simulation::randomTime() {
    return plan_.start + dice_.between(1, static_cast<int>(plan_.length));
}

void Simulation::planActs() {
    const double days = static_cast<double>(plan_.length) / static_cast<double>(day);
    for (int i = 0; i < static_cast<int>(days * plan_.actsPerDay); ++i)
        acts_.emplace(randomTime(), randomAct());
    for (int i = 0; i < 1 + static_cast<int>(days / plan_.daysPerSuspension); ++i) {
        const Second from = randomTime();
        const Second to = from + dice_.between(0, dice_.oneOf({1, 600, 86'400}));
        plan(from, Act::Suspend);
        plan(to, Act::Resume);
        if (dice_.oneIn(3)) // when due entries have accumulated
            plan(std::max(from, to - 1), Act::DryRun);
    }
    for (int i = 0; i < 1 + static_cast<int>(days / plan_.daysPerClockChange); ++i)
        plan(randomTime(), Act::MoveClock,
             dice_.oneOf({-86'400, -3600, -61, -30, -1, 30, 3600, 86'400, 8 * 86'400}));
    for (int i = 0; i < 1 + static_cast<int>(days / plan_.daysPerRestart); ++i) {
        const Second off = dice_.oneOf({0, 1, 600, 86'400, 3 * 86'400});
        const Second at = randomTime();
        if (dice_.oneIn(2)) {
            plan(at, Act::Restart, off);
            continue;
        }
        plan(at, Act::SaveBeforeKill);
        plan(at + dice_.between(0, 20'000), Act::Kill, off);
    }
    // Entries that a dry run marks as running block the others until the program restarts.
    for (int i = 0; i < 1 + static_cast<int>(days / plan_.daysPerDryRun); ++i) {
        const Second from = randomTime();
        plan(from, Act::DryRun);
        plan(from + dice_.between(1, 20'000), Act::Restart);
    }
}

Simulation::Act Simulation::randomAct() {
    const int share = dice_.upTo(99);
    if (share < 25)
        return {Act::RunByHand};
    if (share < 50)
        return {Act::Toggle};
    if (share < 60)
        return {Act::ForeignEnd, dice_.oneOf({-1, 0, 1, 2, 3, 40, 1000})};
    if (share < 68)
        return {Act::Add};
    if (share < 72)
        return {Act::Drop};
    if (share < 86)
        return {Act::Edit};
    return {share < 95 ? Act::Remove : Act::ChangePolicy};
}

void Simulation::perform(const Act& act) {
    scheduler::SchedulerEngine& engine = engine_.program->engine;
    switch (act.what) {
    case Act::RunByHand: {
        const std::vector<int> chosen = randomSelection();
        engine_.program->commands.runNow({chosen.begin(), chosen.end()});
        for (const int position : chosen)
            plain_.rules.runManually(position, now_);
        break;
    }
    case Act::Toggle: {
        const std::vector<int> chosen = randomSelection();
        engine_.program->commands.toggle({chosen.begin(), chosen.end()});
        if (!chosen.empty())
            plain_.rules.toggle(chosen, now_);
        break;
    }
    case Act::ForeignEnd: {
        const int number = static_cast<int>(act.argument);
        const bool matched = engine.onRunFinished(static_cast<std::uint32_t>(number));
        engine_.logEnd(matched, number);
        plain_.logEnd(plain_.rules.processEnded(number, now_), number);
        break;
    }
    case Act::Add:
        add();
        break;
    case Act::Drop:
        drop();
        break;
    case Act::Edit:
        if (count() > 0) {
            const int position = dice_.upTo(count() - 1);
            edit(position, randomItemNow(0, position));
            slowDownCycles();
        }
        break;
    case Act::Remove:
        remove();
        break;
    case Act::ChangePolicy:
        changePolicy();
        break;
    case Act::Suspend:
    case Act::Resume:
        engine.setSuspended(act.what == Act::Suspend);
        plain_.rules.suspend(act.what == Act::Suspend, now_);
        break;
    case Act::DryRun:
        engine.testTick();
        plain_.rules.dryRun(now_);
        break;
    case Act::Restart:
        exitAndStart(act.argument);
        break;
    case Act::SaveBeforeKill:
        killable_ = engine_.keepsSaves = plain_.keepsSaves = true;
        if (count() > 0) // even an edit without a change saves
            edit(0, plain_.rules.items[0]);
        break;
    case Act::Kill:
        killAndStart(act.argument);
        break;
    case Act::MoveClock:
        now_ += act.argument;
        engine_.clock.set(engineNow());
        break;
    }
}

std::vector<int> Simulation::randomSelection() {
    std::vector<int> chosen;
    for (int i = dice_.oneOf({1, 1, 1, 2, 3}); i > 0 && count() > 0; --i)
        chosen.push_back(dice_.upTo(count() - 1));
    std::ranges::sort(chosen);
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    return chosen;
}

Item Simulation::randomItemNow(int serial, int position) {
    Item item = randomItem(dice_, plan_.mix, serial, position, count());
    if (dice_.oneIn(4))
        item.time = now_ + dice_.between(-1, 1);
    return item;
}

void Simulation::add() {
    Item item = randomItemNow(serial_++, count());
    ScheduledProject record = plain::entryOf(item);
    if (dice_.oneIn(3)) { // the new entry that the editor shows
        const std::string path = item.path;
        item = plain_.rules.fresh(now_);
        record = engine_.program->commands.newEntry();
        item.path = record.path = path;
    }
    engine_.program->commands.add(record, {});
    plain_.rules.add(item, now_);
    slowDownCycles();
}

void Simulation::drop() {
    std::vector<std::string> files;
    for (const char* extension : {".kra", ".txt", ".KRB", ".krab", ".krd"})
        if (dice_.oneIn(4))
            files.push_back("C:\\Dropped\\d" + std::to_string(serial_++) + extension);
    engine_.program->commands.addDropped(files);
    plain_.rules.drop(files, now_);
    slowDownCycles();
}

void Simulation::edit(int position, const Item& shown) {
    engine_.edit(static_cast<std::size_t>(position), plain::entryOf(shown));
    plain_.rules.edit(position, shown, now_);
}

void Simulation::remove() {
    // Without this limit, more entries would be removed than added.
    if (count() < plan_.entries * 9 / 10)
        return;
    const std::vector<int> chosen = randomSelection();
    engine_.program->commands.remove({chosen.begin(), chosen.end()});
    plain_.rules.remove(chosen);
    slowDownCycles();
}

// Gives each cycle of followers a delay, because it would run every second without one.
void Simulation::slowDownCycles() {
    const auto followed = [this](int i) {
        const Item& item = plain_.rules.items[static_cast<unsigned>(i)];
        return item.kind == 0 && item.after >= 0 && item.after < count() ? item.after : -1;
    };
    std::vector<int> seenFrom(static_cast<unsigned>(count()), -1);
    for (int first = 0; first < count(); ++first) {
        int i = first;
        for (; i >= 0 && seenFrom[static_cast<unsigned>(i)] < 0; i = followed(i))
            seenFrom[static_cast<unsigned>(i)] = first;
        if (i < 0 || seenFrom[static_cast<unsigned>(i)] != first)
            continue;
        Item shown = plain_.rules.items[static_cast<unsigned>(i)];
        if (shown.minutes < plan_.mix.minCycleMinutes) {
            shown.minutes = plan_.mix.minCycleMinutes;
            edit(i, shown);
        }
    }
}

void Simulation::changePolicy() {
    plain_.rules.waitMinutes = static_cast<unsigned>(dice_.oneOf({0, 1, 5, 20, 60, -1}));
    if (plan_.conflicts == Conflicts::Changing)
        plain_.rules.sideBySide = dice_.oneIn(2);
    engine_.policy.runMultiple = plain_.rules.sideBySide;
    engine_.policy.waitTime = plain_.rules.waitMinutes;
}

void Simulation::exitAndStart(Second secondsOff) {
    const std::vector<std::byte> file = test::encodedSchedule(engine_.program->entries.entries());
    now_ += secondsOff;
    start(file, plain_.rules.items);
}

void Simulation::killAndStart(Second secondsOff) {
    if (!killable_) // the program has restarted since SaveBeforeKill and kept no saves
        return exitAndStart(secondsOff);
    now_ += secondsOff;
    const std::vector<Item> items = plain_.saved;
    start(engine_.saved, items);
}

void Simulation::start(const std::vector<std::byte>& file, const std::vector<Item>& items) {
    killable_ = engine_.keepsSaves = plain_.keepsSaves = false;
    const bool bySystem = dice_.oneIn(2);
    engine_.clock.set(engineNow());
    engine_.policy = {plain_.rules.suspended, plain_.rules.waitMinutes, plain_.rules.sideBySide};
    engine_.start(file, bySystem);
    plain_.spiders.forgetAll();
    std::vector<Item> loaded = items;
    plain_.rules.items.swap(loaded);
    plain_.rules.startProgram(now_, bySystem);
}

} // namespace simulation
