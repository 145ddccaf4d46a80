#include "scheduler/run/runhistory.h"

#include "lib/base/base.h"
#include "lib/base/formatting.h"
#include "scheduler/model/descriptions.h"

#include <array>
#include <cstddef>
#include <exception>
#include <initializer_list>

namespace scheduler {
namespace {

/// In the order of ProgramEvent.
constexpr std::array eventTexts = {"started",
                                   "suspended",
                                   "resumed",
                                   "schedule could not be read",
                                   "schedule could not be saved",
                                   "log-off or shutdown",
                                   "exited"};

std::string lineOf(base::TimeValue start, base::TimeValue end,
                   std::initializer_list<std::string_view> cells) {
    constexpr const char* pattern = "%Y-%m-%d %H:%M:%S\t";
    std::string line = base::formatPattern(start, pattern);
    line += base::formatPattern(end, pattern);
    // Negative if the clock was set back during the run.
    line += std::to_string(secondsBetween(end, start));
    for (const std::string_view cell : cells) {
        line += '\t';
        // Tabs, line breaks and other control characters would break the table.
        for (const char character : cell)
            line += character >= '\0' && character < ' ' ? ' ' : character;
    }
    return line;
}

std::string causeOf(const ScheduledProject& entry, const ScheduleList& schedule, bool manual) {
    if (manual)
        return "by hand";
    if (entry.retriesDone != 0)
        return "retry " + std::to_string(entry.retriesDone);
    if (entry.kind == ScheduleKind::AfterProject)
        return "after " + followedName(entry, schedule);
    return "schedule";
}

std::string outcomeOf(const FinishedRun& run, const std::string& startFailure) {
    if (run.how == RunEnd::GaveUpWaiting)
        return "gave up waiting";
    if (run.how == RunEnd::SystemError)
        return "system error";
    if (!startFailure.empty())
        return "could not be started: " + startFailure;
    if (!run.entry.lastResult.empty())
        return run.entry.lastResult;
    // A command line's error code has no meaning: it is the run number.
    if (run.errorCode != 0 && !isCommandLine(run.entry))
        return "error " + std::to_string(run.errorCode);
    return "ok";
}

template<class Action>
void ignoringFailure(const Action& action) noexcept {
    try {
        action();
    } catch (const std::exception&) {
        return;
    }
}

} // namespace

RunHistory::~RunHistory() {
    if (programStarted_)
        record(ProgramEvent::Exited);
}

void RunHistory::onRunStarted(const ScheduledProject& entry, bool manual) noexcept {
    ignoringFailure([&] {
        StartedRun& run = runs_[static_cast<std::uint32_t>(entry.runNumber)];
        run = {};
        run.cause = causeOf(entry, schedule_, manual);
    });
}

void RunHistory::onProcessNotStarted(std::uint32_t runNumber, std::string_view reason) noexcept {
    ignoringFailure([&] {
        const auto run = runs_.find(runNumber);
        if (run != runs_.end())
            run->second.startFailure = reason;
    });
}

void RunHistory::onRunFinished(const FinishedRun& run) noexcept {
    ignoringFailure([&] {
        StartedRun started;
        if (auto known = runs_.extract(static_cast<std::uint32_t>(run.entry.runNumber)))
            started = std::move(known.mapped());
        store_.append(lineOf(
            run.entry.lastRun, run.end,
            {displayName(run.entry), started.cause, outcomeOf(run, started.startFailure), run.entry.path}));
    });
}

void RunHistory::record(ProgramEvent event, const std::string& path, const std::string& reason) noexcept {
    programStarted_ |= event == ProgramEvent::Started;
    ignoringFailure([&] {
        const base::TimeValue now = clock_.now();
        const std::string outcome =
            eventTexts.at(static_cast<std::size_t>(event)) + (reason.empty() ? reason : ": " + reason);
        store_.append(lineOf(now, now, {base::applicationName, {}, outcome, path}));
    });
}

} // namespace scheduler
