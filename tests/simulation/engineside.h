// The program without its windows: the schedule, the engine and the list's commands, with stand-ins for
// process, registry and file.
#pragma once

#include "scheduler/run/engine.h"
#include "scheduler/ui/schedulecommands.h"
#include "tests/simulation/spiders.h"
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
#include <vector>

namespace simulation {

class EngineSide : scheduler::RunLauncher,
                   scheduler::OutcomeSource,
                   scheduler::EngineListener,
                   scheduler::UserMessages {
public:
    explicit EngineSide(std::uint64_t seed) : spiders(seed) {
        // A tick then pauses after every second start.
        clock.uptimeStep = std::chrono::milliseconds(15);
    }

    /// What one start of the program makes anew.
    struct Program {
        explicit Program(EngineSide& side)
            : engine(entries, side.policy, {side.clock, side, side, side.store, side, side, side.runs}),
              commands(entries, engine, side.store, side.clock, [](const std::string&) {}) {}

        scheduler::ScheduleList entries;
        scheduler::SchedulerEngine engine;
        scheduler::ScheduleCommands commands;
        std::optional<test::RedrawLog> redraws; ///< of the window, from the end of the start on
    };

    /// Starts the program on the schedule that the file holds, as the main window does.
    void start(const std::vector<std::byte>& file, bool bySystem);

    /// A second of the timer. The slices of its tick follow one another at once and count as one change.
    void second();

    /// Takes over what the editor shows, and the retries, which it does not show.
    void edit(std::size_t position, scheduler::ScheduledProject shown);

    test::FakeClock clock;
    scheduler::RunPolicy policy; ///< outlives the program, as the preferences in the registry do
    Spiders spiders;
    test::FakeRunListener runs;
    test::EventLog events;
    std::unique_ptr<Program> program;

    class Store : public scheduler::ScheduleStore {
    public:
        explicit Store(EngineSide& side) : side_(side) {}
        void save(const scheduler::ScheduleList& list) override;

        bool keepsSaves = false;
        std::vector<std::byte> saved;

    private:
        EngineSide& side_;
    };
    Store store{*this};

private:
    bool launch(const scheduler::ScheduledProject& entry) override;
    scheduler::RunOutcome take(std::uint32_t runNumber) override;
    void onSuspendedChanged(bool suspended) override;
    void showError(const std::string&) override {}
    void showNotice(const std::string&) override;

    std::string lastLaunched_;
};

} // namespace simulation
