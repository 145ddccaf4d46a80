#include "tests/simulation/engineside.h"

#include "scheduler/model/schedulecodec.h"
#include "tests/simulation/plainside.h"
#include "tests/support/encodedschedule.h"

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
}

void EngineSide::edit(std::size_t position, const scheduler::ScheduledProject& shown) {
    scheduler::ScheduledProject& entry = program->entries[position];
    entry.kind = shown.kind;
    entry.time = shown.time;
    entry.minutes = shown.minutes;
    entry.afterIndex = shown.afterIndex;
    entry.weekdays = shown.weekdays;
    entry.dayOfMonth = shown.dayOfMonth;
    entry.retryLimit = shown.retryLimit;
    entry.retryIntervalMinutes = shown.retryIntervalMinutes;
    entry.nextRun = computeNextRun(program->engine.state(), entry, clock.now());
    onScheduleChanged();
    store.save(program->entries);
}

bool EngineSide::Store::save(const scheduler::ScheduleList& list) {
    side_.events.push_back("save");
    if (keepsSaves)
        saved = test::encodedSchedule(list.entries());
    return true;
}

std::string EngineSide::commandLineOf(const scheduler::ScheduledProject& entry) {
    lastAsked_ = entry.path;
    events.push_back(requestEvent(entry.path, entry.runNumber));
    return entry.path;
}

bool EngineSide::launch(std::unique_ptr<scheduler::RunRequest> request) {
    const int number = static_cast<int>(request->runNumber);
    events.push_back(launchEvent(number));
    return spiders.launch(request->commandLine, number, clock.now().seconds());
}

scheduler::RunOutcome EngineSide::take(std::uint32_t runNumber) {
    const plain::Outcome outcome = spiders.take(static_cast<int>(runNumber));
    return {outcome.text, outcome.error};
}

void EngineSide::onSuspendedChanged(bool suspended) {
    events.push_back(showEvent(suspended));
}

void EngineSide::showNotice(const std::string&) {
    events.push_back(messageEvent(lastAsked_));
}

} // namespace simulation
