// Starts due entries, supervises the runs and records how they end. Runs on the user-interface thread, driven
// by a timer tick per second and a message per finished run. The state of each run is in its entry.
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

    /// Must show the state and store the preferences.
    virtual void onSuspendedChanged(bool suspended) = 0;
};

struct TickResult {
    bool changed = false;    ///< an entry started, failed to start, is still waiting or gave up waiting
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
    /// `entries` and `policy` must outlive the engine. setSuspended changes `policy`.
    SchedulerEngine(ScheduleList& entries, RunPolicy& policy, const EngineServices& services);
    SchedulerEngine(const SchedulerEngine&) = delete;
    SchedulerEngine& operator=(const SchedulerEngine&) = delete;
    ~SchedulerEngine() override;

    void setStartupFlag(bool flag) { startupFlag_ = flag; }
    EngineState state() const;

    /// Clears every run state and computes every next run. Call after a load.
    void resetAll(base::TimeValue now);

    /// Like tick, but does nothing while suspended.
    TickResult onTimer(base::TimeValue now);

    /// Starts each due entry, in order. If entries may run in parallel, stops after 30 ms and returns
    /// unfinished if due entries remain. The next call then continues with the old `now`.
    TickResult tick(base::TimeValue now);

    /// The test command: like tick, but starts no process and has no time limit. Also works while suspended.
    /// The entries stay marked as running until the program restarts.
    void testTick();

    bool isDue(std::size_t position, base::TimeValue now) const { return isDueAt(entries_[position], now); }

    bool anyRunning() const;

    /// Starts an entry or makes it wait for a running project, as the policy says. A manual run does not
    /// wait, and a failure to start it is shown to the user.
    void runEntry(std::size_t position, base::TimeValue now, bool manual);

    /// Call when a run's process has ended. False if no running entry has this number.
    [[nodiscard]] bool onRunFinished(std::uint32_t runNumber);

    /// Skips running entries.
    void recomputeAll(base::TimeValue now);

    void setSuspended(bool suspended);

private:
    enum class Cause {
        Schedule,
        User,
        Test, ///< the test command: only marks the entry as running
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
    mutable std::size_t lastSeenRunning_ = 0; // the position that anyRunning tries first; can be out of range
};

} // namespace scheduler
