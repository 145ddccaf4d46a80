// The engine: starts what is due, supervises the runs and records how they ended.
//
// It lives on the user-interface thread, driven by a timer tick per second and by a message per finished run,
// and keeps its state in the schedule's entries, whose observers it tells of each change. Everything else
// outside is reached through the interfaces below.
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

/// Told of what the schedule does not show.
class EngineListener {
public:
    virtual ~EngineListener() = default;

    /// The scheduler was suspended or resumed: show it and store the preferences.
    virtual void onSuspendedChanged(bool suspended) = 0;
};

/// What a tick has done.
struct TickResult {
    bool changed = false;    ///< an entry was started, goes on waiting or has given up
    bool unfinished = false; ///< more entries are due: call again once pending input is handled

    friend bool operator==(const TickResult&, const TickResult&) = default;
};

/// What the engine works with. Owns nothing; all of it outlives the engine.
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
    /// `policy` holds the preferences that rule the engine, which reads them afresh each time.
    SchedulerEngine(ScheduleList& entries, RunPolicy& policy, const EngineServices& services);
    SchedulerEngine(const SchedulerEngine&) = delete;
    SchedulerEngine& operator=(const SchedulerEngine&) = delete;
    ~SchedulerEngine() override;

    /// Whether the program was started at log-on and the schedule is being evaluated for the first time.
    void setStartupFlag(bool flag) { startupFlag_ = flag; }
    EngineState state() const;

    /// Clears the run state of every entry and computes its next run: after a load.
    void resetAll(base::TimeValue now);

    /// The engine's timer: a tick, unless suspended.
    TickResult onTimer(base::TimeValue now);

    /// Visits each entry once, in schedule order, and starts it if it is due. While entries may run side by
    /// side, a tick that has taken 30 ms returns unfinished; the next call continues it at the next entry,
    /// with the `now` of its beginning.
    TickResult tick(base::TimeValue now);

    /// A tick that starts no process, even while suspended, and is never unfinished: entries that are due
    /// show as running until the program is started again. For trying a schedule out.
    void testTick();

    /// Whether the entry is enabled, not running, and `now` has reached its next run.
    bool isDue(std::size_t position, base::TimeValue now) const { return isDueAt(entries_[position], now); }

    bool anyRunning() const;

    /// Starts an entry, or lets it wait for a running project as the policy says. A manual run does not wait,
    /// and its failure is shown to the user.
    void runEntry(std::size_t position, base::TimeValue now, bool manual);

    /// The process of a run has ended. False when no running entry has this number: a late or foreign notice.
    [[nodiscard]] bool onRunFinished(std::uint32_t runNumber);

    /// Computes the next run of every entry that is not running.
    void recomputeAll(base::TimeValue now);

    void setSuspended(bool suspended);

private:
    /// Why an entry is started.
    enum class Cause {
        Schedule, ///< it is due
        User,     ///< the user asked for it
        Trial,    ///< it is due, and only shown
    };

    [[nodiscard]] static bool isDueAt(const ScheduledProject& entry, base::TimeValue now) {
        return now >= entry.nextRun && !entry.disabled && !entry.running;
    }

    struct PlaceInTick {
        base::TimeValue now; ///< of the whole tick
        std::size_t next;    ///< position of the entry to visit next
    };

    TickResult startDue(PlaceInTick place, Cause cause);
    /// The first entry from a position on that is due; the size of the schedule when there is none.
    std::size_t findDue(std::size_t from, base::TimeValue now) const;
    /// Starts the entry, or has it wait.
    void startEntry(std::size_t position, base::TimeValue now, Cause cause);
    /// False when its process could not be started for lack of a worker.
    [[nodiscard]] bool launch(const ScheduledProject& entry) noexcept;
    void tellOfFailure() noexcept;
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
    std::optional<PlaceInTick> unfinished_;   ///< the tick to continue
    mutable std::size_t lastSeenRunning_ = 0; // where anyRunning looks first; may name any entry or none
};

} // namespace scheduler
