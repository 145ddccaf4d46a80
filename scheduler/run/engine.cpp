#include "scheduler/run/engine.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <new>
#include <utility>

namespace scheduler {

namespace {

constexpr const char* conflictText = "Could not run on schedule; another project was already running.";
constexpr const char* systemErrorText = "A system error prevented the project from running.";

// Added to an entry's retry interval.
constexpr base::TimeSpan retryDelay = base::TimeSpan::fromSeconds(5);

// The window does not respond during a tick.
constexpr std::chrono::milliseconds maxTickTime(30);

/// The outcome of a run that did not take place. If memory runs out, the reason is omitted: the end must be
/// recorded, or the entry would stay marked as running.
RunOutcome notRun(const char* reason) {
    try {
        return {reason, 0};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

std::uint32_t runNumberOf(const ScheduledProject& entry) {
    return static_cast<std::uint32_t>(entry.runNumber);
}

} // namespace

SchedulerEngine::SchedulerEngine(ScheduleList& entries, RunPolicy& policy, const EngineServices& services)
    : entries_(entries), policy_(policy), services_(services) {
    entries_.addObserver(*this);
}

SchedulerEngine::~SchedulerEngine() {
    entries_.removeObserver(*this);
}

EngineState SchedulerEngine::state() const {
    return {startupFlag_, policy_.suspended};
}

void SchedulerEngine::resetAll(base::TimeValue now) {
    NextRuns nextRuns(state(), now, services_.clock);
    for (ScheduledProject& entry : entries_) {
        resetRunState(entry);
        entry.nextRun = nextRuns.of(entry);
    }
    entries_.notifyChanged();
}

TickResult SchedulerEngine::onTimer(base::TimeValue now) {
    return policy_.suspended ? TickResult() : tick(now);
}

TickResult SchedulerEngine::tick(base::TimeValue now) {
    return startDue(std::exchange(unfinished_, {}).value_or(TickPosition{now, 0}), Cause::Schedule);
}

void SchedulerEngine::testTick() {
    startDue({services_.clock.now(), 0}, Cause::Test);
}

TickResult SchedulerEngine::startDue(TickPosition place, Cause cause) {
    const ScheduleBatch batch(entries_);
    const std::chrono::milliseconds end = services_.clock.uptime() + maxTickTime;
    std::size_t position = findDue(place.next, place.now);
    while (position < entries_.size()) {
        startEntry(position, place.now, cause);
        const bool mayPause = cause == Cause::Schedule && policy_.runMultiple && entries_[position].running;
        position = findDue(position + 1, place.now);
        if (mayPause && position < entries_.size() && services_.clock.uptime() >= end) {
            unfinished_ = {place.now, position};
            break;
        }
    }
    return {batch.hasChanges(), unfinished_.has_value()};
}

void SchedulerEngine::onEntriesRemoved(std::span<const std::size_t> positions) {
    // New entries are appended, so only removals before the next position change it.
    if (!unfinished_)
        return;
    const auto isVisited = [next = unfinished_->next](std::size_t position) { return position < next; };
    unfinished_->next -= static_cast<std::size_t>(std::ranges::count_if(positions, isVisited));
}

std::size_t SchedulerEngine::findDue(std::size_t from, base::TimeValue now) const {
    const auto rest = entries_.entries().subspan(from);
    const auto due =
        std::ranges::find_if(rest, [now](const ScheduledProject& entry) { return isDueAt(entry, now); });
    return entries_.size() - static_cast<std::size_t>(rest.end() - due);
}

bool SchedulerEngine::anyRunning() const {
    // A tick calls this for every due entry. Trying the last result first avoids searching the whole
    // schedule each time.
    if (lastSeenRunning_ < entries_.size() && entries_[lastSeenRunning_].running)
        return true;
    const auto found =
        std::ranges::find_if(entries_, [](const ScheduledProject& entry) { return entry.running != 0; });
    lastSeenRunning_ = static_cast<std::size_t>(found - entries_.begin());
    return found != entries_.end();
}

void SchedulerEngine::runEntry(std::size_t position, base::TimeValue now, bool manual) {
    startEntry(position, now, manual ? Cause::User : Cause::Schedule);
}

void SchedulerEngine::startEntry(std::size_t position, base::TimeValue now, Cause cause) {
    if (cause != Cause::User && !policy_.runMultiple && anyRunning()) {
        waitForOthers(position, now);
        return;
    }

    ScheduledProject& entry = entries_[position];
    markRunning(entry, now);
    if (cause != Cause::Test)
        services_.runs.onRunStarted(entry, cause == Cause::User);
    // A test leaves the entry marked as running, to show that it would have been started.
    if (cause == Cause::Test || launch(entry)) {
        entries_.notifyChanged();
        return;
    }
    if (cause == Cause::User)
        showFailure();
    finishRun(position, now, notRun(systemErrorText), RunEnd::SystemError);
}

bool SchedulerEngine::launch(const ScheduledProject& entry) noexcept {
    try {
        return services_.launcher.launch(entry);
    } catch (const std::exception&) {
        // The caller must still record the end of the run, or the entry would stay marked as running.
        return false;
    }
}

void SchedulerEngine::showFailure() noexcept {
    try {
        services_.messages.showNotice(systemErrorText);
    } catch (const std::exception&) {
        // No memory for the message. Recording the end of the run is more important.
        return;
    }
}

void SchedulerEngine::waitForOthers(std::size_t position, base::TimeValue now) {
    ScheduledProject& entry = entries_[position];
    if (entry.waitingSince == base::TimeValue()) {
        entry.waitingSince = now;
        return;
    }
    if (hasWaitedTooLong(entry, now)) {
        // Giving up is recorded as a successful run that started and ended now. The entry is not retried, and
        // its followers are woken.
        markRunning(entry, now);
        services_.runs.onRunStarted(entry, false);
        finishRun(position, now, notRun(conflictText), RunEnd::GaveUpWaiting);
    }
    entries_.notifyChanged();
}

bool SchedulerEngine::hasWaitedTooLong(const ScheduledProject& entry, base::TimeValue now) const {
    // A wait time of N minutes ends after N + 1 minutes, because the number of whole minutes must exceed N.
    // The comparison is unsigned, so an enormous wait time never ends by itself. Setting the clock back to a
    // minute or more before the start of the wait ends the wait.
    const std::int32_t minutesWaited = secondsBetween(now, entry.waitingSince) / 60;
    return static_cast<std::uint32_t>(minutesWaited) > policy_.waitTime;
}

void SchedulerEngine::markRunning(ScheduledProject& entry, base::TimeValue now) {
    std::int32_t highest = 0;
    for (const ScheduledProject& other : entries_) {
        if (other.running)
            highest = std::max(highest, other.runNumber);
    }
    entry.running = 1;
    entry.runStart = now;
    entry.runNumber = static_cast<std::int32_t>(static_cast<std::uint32_t>(highest) + 1);
}

std::size_t SchedulerEngine::findRun(std::uint32_t runNumber) const {
    const auto found = std::ranges::find_if(entries_, [runNumber](const ScheduledProject& entry) {
        return entry.running && runNumberOf(entry) == runNumber;
    });
    return static_cast<std::size_t>(found - entries_.begin());
}

bool SchedulerEngine::onRunFinished(std::uint32_t runNumber) {
    const std::size_t position = findRun(runNumber);
    if (position == entries_.size())
        return false;

    finishRun(position, services_.clock.now(), outcomeOf(entries_[position]), RunEnd::Reported);
    return true;
}

RunOutcome SchedulerEngine::outcomeOf(const ScheduledProject& entry) const {
    const std::uint32_t runNumber = runNumberOf(entry);
    // A command line leaves no outcome. Deliberately, its error code is the run number, which is never 0. So
    // the run counts as failed and is repeated until its retries are used up.
    if (isCommandLine(entry))
        return {{}, runNumber};
    try {
        return services_.outcomes.take(runNumber);
    } catch (const std::exception&) {
        // Treated as a missing outcome: the end of a run is reported only once, so it must be recorded now.
        return {};
    }
}

void SchedulerEngine::finishRun(std::size_t position, base::TimeValue finishTime, RunOutcome outcome,
                                RunEnd how) {
    ScheduledProject& entry = entries_[position];
    entry.running = 0;
    entry.lastRun = entry.runStart;
    entry.waitingSince = base::TimeValue();
    entry.lastResult = std::move(outcome.resultText);

    if (outcome.errorCode != 0 && entry.retriesDone < entry.retryLimit) {
        entry.nextRun =
            services_.clock.now() + base::TimeSpan::fromMinutes(entry.retryIntervalMinutes) + retryDelay;
        ++entry.retriesDone;
    } else {
        entry.retriesDone = 0;
        entry.nextRun = computeNextRun(state(), entry, finishTime, services_.clock);
        wakeFollowers(position, finishTime);
    }

    entries_.notifyChanged();
    services_.store.save(entries_);
    services_.runs.onRunFinished({entry, finishTime, outcome.errorCode, how});
}

void SchedulerEngine::wakeFollowers(std::size_t position, base::TimeValue finishTime) {
    // Disabled and running followers need no exception: enabling an entry or finishing its run sets its next
    // run again.
    for (ScheduledProject& follower : entries_) {
        if (follower.kind == ScheduleKind::AfterProject && std::cmp_equal(follower.afterIndex, position))
            follower.nextRun = finishTime + base::TimeSpan::fromMinutes(follower.minutes);
    }
}

void SchedulerEngine::recomputeAll(base::TimeValue now) {
    NextRuns nextRuns(state(), now, services_.clock);
    for (ScheduledProject& entry : entries_) {
        if (!entry.running)
            entry.nextRun = nextRuns.of(entry);
    }
    entries_.notifyChanged();
}

void SchedulerEngine::setSuspended(bool suspended) {
    policy_.suspended = suspended;
    if (suspended)
        unfinished_.reset();
    recomputeAll(services_.clock.now());
    services_.listener.onSuspendedChanged(suspended);
}

} // namespace scheduler
