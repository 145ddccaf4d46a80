#include "tests/simulation/engineside.h"

#include "scheduler/model/schedulecodec.h"
#include "tests/simulation/plainside.h"
#include "tests/support/encodedschedule.h"

#include <utility>

namespace simulation {

void EngineSide::start(const std::vector<std::byte>& file, bool bySystem) {
    program = std::make_unique<Program>(*this);
    scheduler::SchedulerEngine& engine = program->engine;
    engine.setStartupFlag(bySystem);
    spiders.forgetAll();
    scheduler::decodeSchedule(file, scheduler::scheduleMagic, program->entries);
    engine.resetAll(clock.now());
    if (policy.suspended)
        engine.setSuspended(true);
    engine.recomputeAll(clock.now());
    engine.setStartupFlag(false);
    program->redraws.emplace(program->entries, events);
}

void EngineSide::second() {
    const scheduler::ScheduleBatch batch(program->entries);
    while (program->engine.onTimer(clock.now()).unfinished)
        continue;
}

void EngineSide::edit(std::size_t position, scheduler::ScheduledProject shown) {
    scheduler::ScheduledProject& entry = program->entries[position];
    entry.retryLimit = shown.retryLimit;
    entry.retryIntervalMinutes = shown.retryIntervalMinutes;
    shown.path = entry.path;
    program->commands.edit(position, std::move(shown));
}

void EngineSide::Store::save(const scheduler::ScheduleList& list) {
    side_.events.push_back("save");
    if (keepsSaves)
        saved = test::encodedSchedule(list.entries());
}

bool EngineSide::launch(const scheduler::ScheduledProject& entry) {
    lastLaunched_ = entry.path;
    events.push_back(launchEvent(entry.path, entry.runNumber));
    return spiders.launch(entry.path, entry.runNumber, clock.now().seconds());
}

scheduler::RunOutcome EngineSide::take(std::uint32_t runNumber) {
    const plain::Outcome outcome = spiders.take(static_cast<int>(runNumber));
    return {outcome.text, outcome.error};
}

void EngineSide::onSuspendedChanged(bool suspended) {
    events.push_back(showEvent(suspended));
}

void EngineSide::showNotice(const std::string&) {
    events.push_back(messageEvent(lastLaunched_));
}

} // namespace simulation
