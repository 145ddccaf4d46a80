// Starts due entries, supervises the runs and records how they end. Runs on the user-interface thread, driven
// by a timer tick per second and a message per finished run. Its state is in the schedule's entries.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/nextrun.h"
#include "scheduler/model/runpolicy.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "scheduler/run/outcomesource.h"
#include "scheduler/run/runlauncher.h"
#include "scheduler/run/runlistener.h"
#include "scheduler/run/usermessages.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace scheduler {

class EngineListener {
public:
    virtual ~EngineListener() = default;

    /// The listener shows the state and stores the preferences.
    virtual void onSuspendedChanged(bool suspended) = 0;
};

struct TickResult {
    bool changed = false;    ///< an entry was started, still waits or gave up
    bool unfinished = false; ///< more entries are due: call again after handling pending input

    friend bool operator==(const TickResult&, const TickResult&) = default;
};

/// Not owned; all must outlive the engine.
struct EngineServices {
    const base::Clock& clock;
    RunLauncher& launcher;
    OutcomeSource& outcomes;
    ScheduleStore& store;
    UserMessages& messages;
    EngineListener& listener;
    RunListener& runs;
};

class SchedulerEngine : private ScheduleObserver {
public:
    /// Reads `policy` each time it needs it.
    SchedulerEngine(ScheduleList& entries, RunPolicy& policy, const EngineServices& services);
    SchedulerEngine(const SchedulerEngine&) = delete;
    SchedulerEngine& operator=(const SchedulerEngine&) = delete;
    ~SchedulerEngine() override;

    void setStartupFlag(bool flag) { startupFlag_ = flag; }
    EngineState state() const;

    /// For use after a load: clears every run state and computes every next run.
    void resetAll(base::TimeValue now);

    /// A tick, unless suspended.
    TickResult onTimer(base::TimeValue now);

    /// Starts each due entry, in order. If entries may run in parallel, pauses after a start once 30 ms have
    /// passed. If more entries are due, returns unfinished, and the next call continues with the old `now`.
    TickResult tick(base::TimeValue now);

    /// For trying out a schedule: marks due entries as running, even while suspended, but starts no process.
    /// The entries stay marked until the program restarts. Never unfinished.
    void testTick();

    bool isDue(std::size_t position, base::TimeValue now) const { return isDueAt(entries_[position], now); }

    bool anyRunning() const;

    /// Starts an entry or makes it wait for a running project, as the policy says. A manual run does not
    /// wait, and its failure is shown to the user.
    void runEntry(std::size_t position, base::TimeValue now, bool manual);

    /// Call when a run's process has ended. False, for a stray notice, if no running entry has this number.
    [[nodiscard]] bool onRunFinished(std::uint32_t runNumber);

    /// Skips running entries.
    void recomputeAll(base::TimeValue now);

    void setSuspended(bool suspended);

private:
    enum class Cause {
        Schedule,
        User,
        Trial, ///< due, but only marked as running
    };

    [[nodiscard]] static bool isDueAt(const ScheduledProject& entry, base::TimeValue now) {
        return now >= entry.nextRun && !entry.disabled && !entry.running;
    }

    struct TickPosition {
        base::TimeValue now;
        std::size_t next;
    };

    TickResult startDue(TickPosition place, Cause cause);
    std::size_t findDue(std::size_t from, base::TimeValue now) const;
    void startEntry(std::size_t position, base::TimeValue now, Cause cause);
    /// False if no worker could be started.
    [[nodiscard]] bool launch(const ScheduledProject& entry) noexcept;
    void showFailure() noexcept;
    void waitForOthers(std::size_t position, base::TimeValue now);
    bool hasWaitedTooLong(const ScheduledProject& entry, base::TimeValue now) const;
    void markRunning(ScheduledProject& entry, base::TimeValue now);
    RunOutcome outcomeOf(const ScheduledProject& entry) const;
    std::size_t findRun(std::uint32_t runNumber) const;
    void finishRun(std::size_t position, base::TimeValue finishTime, RunOutcome outcome, RunEnd how);
    void wakeFollowers(std::size_t position, base::TimeValue finishTime);

    void onEntriesRemoved(std::span<const std::size_t> positions) override;
    void onCleared() override { unfinished_.reset(); }

    ScheduleList& entries_;
    RunPolicy& policy_;
    EngineServices services_;
    bool startupFlag_ = false;
    std::optional<TickPosition> unfinished_;
    mutable std::size_t lastSeenRunning_ = 0; // where anyRunning looks first; can be out of range
};

} // namespace scheduler
