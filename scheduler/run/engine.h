// The engine: starts what is due, supervises the runs and records how they ended.
//
// It lives on the user-interface thread, driven by a timer tick per second and by a message per finished run,
// and keeps its state in the schedule's entries. Everything outside is reached through the interfaces below.
#pragma once

#include "lib/base/dates.h"
#include "scheduler/model/nextrun.h"
#include "scheduler/model/runpolicy.h"
#include "scheduler/model/schedulelist.h"
#include "scheduler/model/schedulestore.h"
#include "scheduler/run/outcomesource.h"
#include "scheduler/run/runlauncher.h"
#include "scheduler/run/usermessages.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace scheduler {

/// Who shows what the engine does.
class EngineListener {
public:
    virtual ~EngineListener() = default;

    /// An entry's state or next run may have changed. Must not fail: what has changed is saved behind it.
    virtual void onScheduleChanged() = 0;

    /// Asked after each run that a tick has started: whether that has taken so long that others should have
    /// their turn. The tick then ends early, and the listener sees to it that the next one, which goes on,
    /// comes soon.
    [[nodiscard]] virtual bool wantsTickToPause() { return false; }

    /// The scheduler was suspended or resumed: show it and store the preferences.
    virtual void onSuspendedChanged(bool suspended) = 0;
};

/// What the engine works with. Owns nothing; all of it outlives the engine.
struct EngineServices {
    const base::Clock& clock;
    RunLauncher& launcher;
    OutcomeSource& outcomes;
    ScheduleStore& store;
    UserMessages& messages;
    EngineListener& listener;
};

class SchedulerEngine {
public:
    /// `policy` holds the preferences that rule the engine, which reads them afresh each time.
    SchedulerEngine(ScheduleList& entries, RunPolicy& policy, const EngineServices& services);

    /// Whether the program was started at log-on and the schedule is being evaluated for the first time.
    void setStartupFlag(bool flag) { startupFlag_ = flag; }
    EngineState state() const;

    /// Clears the run state of every entry and computes its next run: after a load.
    void resetAll(base::TimeValue now);

    /// The engine's timer: a tick at the current time, unless suspended.
    void onTimer(base::TimeValue now);

    /// Starts, in schedule order, each entry that is due, unless the listener wants a pause. What is left
    /// stays due.
    void tick(base::TimeValue now);

    /// A tick that starts no process even while suspended: entries that are due show as running until the
    /// program is started again. For trying a schedule out.
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
    /// How a run comes about.
    enum class Cause {
        Schedule, ///< it is due
        User,     ///< the user asked for it
        Trial,    ///< it is due, and only shown
    };

    [[nodiscard]] static bool isDueAt(const ScheduledProject& entry, base::TimeValue now) {
        return now >= entry.nextRun && !entry.disabled && !entry.running;
    }

    void startDue(base::TimeValue now, Cause cause);
    /// The first entry from a position on that is due; the size of the schedule when there is none.
    std::size_t findDue(std::size_t from, base::TimeValue now) const;
    /// Starts the entry, or has it wait.
    void startEntry(std::size_t position, base::TimeValue now, Cause cause);
    void tellOfFailure() noexcept;
    void waitForOthers(std::size_t position, base::TimeValue now);
    bool hasWaitedTooLong(const ScheduledProject& entry, base::TimeValue now) const;
    void markRunning(ScheduledProject& entry, base::TimeValue now);
    [[nodiscard]] std::unique_ptr<RunRequest> makeRequest(const ScheduledProject& entry) const;
    RunOutcome outcomeOf(const ScheduledProject& entry) const;
    std::size_t findRun(std::uint32_t runNumber) const;
    void finishRun(std::size_t position, base::TimeValue finishTime, RunOutcome outcome);
    void wakeFollowers(std::size_t position, base::TimeValue finishTime);

    ScheduleList& entries_;
    RunPolicy& policy_;
    EngineServices services_;
    bool startupFlag_ = false;
    mutable std::size_t lastSeenRunning_ = 0; // where anyRunning looks first; may name any entry or none
};

} // namespace scheduler
