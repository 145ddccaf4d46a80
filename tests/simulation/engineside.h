// The program without its windows: the schedule, the engine and the list's commands, with stand-ins for
// process, registry and file.
#pragma once

#include "scheduler/run/engine.h"
#include "scheduler/ui/schedulecommands.h"
#include "tests/simulation/spiders.h"
#include "tests/support/eventlog.h"
#include "tests/support/fakeclock.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace simulation {

class EngineSide : scheduler::RunLauncher,
                   scheduler::OutcomeSource,
                   scheduler::EngineListener,
                   scheduler::UserMessages {
public:
    explicit EngineSide(std::uint64_t seed) : spiders(seed) {}

    /// What one start of the program makes anew.
    struct Program {
        explicit Program(EngineSide& side)
            : engine(entries, side.policy, {side.clock, side, side, side.store, side, side}),
              commands(entries, engine, side.store, side.clock) {}

        scheduler::ScheduleList entries;
        scheduler::SchedulerEngine engine;
        scheduler::ScheduleCommands commands;
    };

    /// Starts the program on the schedule that the file holds, as the main window does.
    void start(const std::vector<std::byte>& file, bool bySystem);

    void edit(std::size_t position, const scheduler::ScheduledProject& shown);

    test::FakeClock clock;
    scheduler::RunPolicy policy; ///< outlives the program, as the preferences in the registry do
    Spiders spiders;
    test::EventLog events;
    std::unique_ptr<Program> program;

    class Store : public scheduler::ScheduleStore {
    public:
        explicit Store(EngineSide& side) : side_(side) {}
        bool save(const scheduler::ScheduleList& list) override;

        bool keepsSaves = false;
        std::vector<std::byte> saved;

    private:
        EngineSide& side_;
    };
    Store store{*this};

private:
    std::string commandLineOf(const scheduler::ScheduledProject& entry) override;
    bool launch(std::unique_ptr<scheduler::RunRequest> request) override;
    scheduler::RunOutcome take(std::uint32_t runNumber) override;
    void onScheduleChanged() override { events.push_back("redraw"); }
    void onSuspendedChanged(bool suspended) override;
    void showError(const std::string&) override {}
    void showNotice(const std::string&) override;

    std::string lastAsked_;
};

} // namespace simulation
