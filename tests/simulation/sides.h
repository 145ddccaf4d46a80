// The two sides of a simulation, the program without windows and the plain rules, must log the same events.
#pragma once

#include "scheduler/model/schedulecodec.h"
#include "scheduler/run/engine.h"
#include "scheduler/ui/schedulecommands.h"
#include "tests/simulation/world.h"
#include "tests/support/encodedschedule.h"
#include "tests/support/eventlog.h"
#include "tests/support/fakeclock.h"
#include "tests/support/fakerunlistener.h"
#include "tests/support/redrawlog.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace simulation {

template<class Saved>
class Side {
public:
    explicit Side(std::uint64_t seed) : spiders(seed) {}

    void logEnd(bool matched, int number) {
        events.push_back((matched ? "end of " : "unmatched end of ") + std::to_string(number));
    }

    Spiders spiders;
    test::EventLog events;
    bool keepsSaves = false;
    Saved saved;

protected:
    bool launchLogged(const std::string& path, int number, Second now) {
        events.push_back("launch " + path + " as " + std::to_string(number));
        return spiders.launch(path, number, now);
    }
    void logMessage(const std::string& path) { events.push_back("message for " + path); }
    void logSuspended(bool suspended) { events.push_back(suspended ? "show suspended" : "show resumed"); }
    void logSave(auto&& toSave) {
        events.push_back("save");
        if (keepsSaves)
            saved = toSave();
    }
};

class PlainSide : public Side<std::vector<plain::Item>> {
public:
    explicit PlainSide(std::uint64_t seed)
        : Side(seed),
          rules({[this](const plain::Item& item, Second now) {
                     return launchLogged(item.path, item.number, now);
                 },
                 [this](int number) { return spiders.take(number); },
                 [this](const plain::Item& item) { logMessage(item.path); },
                 [this] { events.push_back("redraw"); }, [this](bool suspended) { logSuspended(suspended); },
                 [this] { logSave([this] { return rules.items; }); }}) {}
    PlainSide(const PlainSide&) = delete;
    PlainSide& operator=(const PlainSide&) = delete;

    plain::Rules rules;
};

class EngineSide : public Side<std::vector<std::byte>>,
                   scheduler::RunLauncher,
                   scheduler::OutcomeSource,
                   scheduler::EngineListener,
                   scheduler::ScheduleStore,
                   scheduler::UserMessages {
public:
    explicit EngineSide(std::uint64_t seed) : Side(seed) {
        clock.uptimeStep = std::chrono::milliseconds(15); // a tick pauses after every two starts
    }

    struct Program {
        explicit Program(EngineSide& side)
            : engine(entries, side.policy, {side.clock, side, side, side, side, side, side.runs}),
              commands(entries, engine, side, side.clock, [](const std::string&) {}) {}

        scheduler::ScheduleList entries;
        scheduler::SchedulerEngine engine;
        scheduler::ScheduleCommands commands;
        std::optional<test::RedrawLog> redraws; ///< set once start-up is complete
    };

    /// Loads the file and starts the program as the main window does.
    void start(const std::vector<std::byte>& file, bool bySystem) {
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

    /// Runs all slices of a timer tick as one change.
    void second() {
        const scheduler::ScheduleBatch batch(program->entries);
        while (program->engine.onTimer(clock.now()).unfinished)
            continue;
    }

    /// Edits all but the path. The editor does not show the retries, so they are set directly.
    void edit(std::size_t position, scheduler::ScheduledProject shown) {
        scheduler::ScheduledProject& entry = program->entries[position];
        entry.retryLimit = shown.retryLimit;
        entry.retryIntervalMinutes = shown.retryIntervalMinutes;
        shown.path = entry.path;
        program->commands.edit(position, std::move(shown));
    }

    test::FakeClock clock;
    scheduler::RunPolicy policy; ///< survives a restart, like the preferences in the registry
    test::FakeRunListener runs;
    std::unique_ptr<Program> program;

private:
    bool launch(const scheduler::ScheduledProject& entry) override {
        lastLaunched_ = entry.path;
        return launchLogged(entry.path, entry.runNumber, clock.now().seconds());
    }
    scheduler::RunOutcome take(std::uint32_t runNumber) override {
        const plain::Outcome outcome = spiders.take(static_cast<int>(runNumber));
        return {outcome.text, outcome.error};
    }
    void onSuspendedChanged(bool suspended) override { logSuspended(suspended); }
    void showError(const std::string&) override {}
    void showNotice(const std::string&) override { logMessage(lastLaunched_); }
    void save(const scheduler::ScheduleList& list) override {
        logSave([&] { return test::encodedSchedule(list.entries()); });
    }

    std::string lastLaunched_;
};

} // namespace simulation
